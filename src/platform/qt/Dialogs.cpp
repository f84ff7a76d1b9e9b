// SPDX-License-Identifier: MIT
#include "platform/Dialogs.h"

#include <QFileDialog>
#include <QMessageBox>

#include "platform/Machine.h"
#include "platform/qt/NativeWindow.h"

namespace {

/// The window that a dialog belongs to: the newest one on the screen.
QWidget* Front() {
  NativeWindow* front = NativeWindow::Newest();
  return front != nullptr && front->isVisible() ? front : nullptr;
}

/// Of the window in front, or of the main window while none is on the screen yet.
QString FrontTitle() {
  const NativeWindow* front = NativeWindow::Newest();
  return front == nullptr ? QString() : front->windowTitle();
}

}  // namespace

void MessageBox(const std::string& text) {
  // What was typed before the message could be seen is no answer to it.
  Machine::Current().DoEvents(0);
  QMessageBox box(QMessageBox::NoIcon, FrontTitle(), QString::fromStdString(text), QMessageBox::Ok, Front());
  box.setObjectName("MessageBox");
  box.setTextFormat(Qt::PlainText);
  box.button(QMessageBox::Ok)->setObjectName("OKBtn");
  box.button(QMessageBox::Ok)->setIcon(QIcon());
  box.exec();
}

std::optional<FolderItem> SelectFolderDialog::ShowModal() {
  QFileDialog dialog(Front(), Title.empty() ? FrontTitle() : QString::fromStdString(Title));
  dialog.setObjectName("SelectFolderDialog");
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setLabelText(QFileDialog::Accept, QString::fromStdString(ActionButtonCaption));
  if (!CancelButtonCaption.empty())
    dialog.setLabelText(QFileDialog::Reject, QString::fromStdString(CancelButtonCaption));
  if (InitialDirectory) dialog.setDirectory(QString::fromStdString(InitialDirectory->NativePath()));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return FolderItem(dialog.selectedFiles().first().toStdString());
}
