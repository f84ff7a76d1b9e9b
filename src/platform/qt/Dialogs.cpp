// SPDX-License-Identifier: MIT
#include "platform/Dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "platform/qt/NativeWindow.h"

namespace {

/// The window that a dialog belongs to: the newest one on the screen.
QWidget* Front() {
  QWidget* front = QApplication::activeModalWidget();
  if (front != nullptr) return front;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && qobject_cast<NativeWindow*>(window) != nullptr) front = window;
  return front;
}

QString TitleOf(const QWidget* window) {
  return window == nullptr ? QApplication::applicationDisplayName() : window->windowTitle();
}

}  // namespace

void MessageBox(const std::string& text) {
  QWidget* parent = Front();
  QMessageBox box(QMessageBox::NoIcon, TitleOf(parent), QString::fromStdString(text), QMessageBox::Ok,
                  parent);
  box.setObjectName("MessageBox");
  box.setTextFormat(Qt::PlainText);
  box.button(QMessageBox::Ok)->setObjectName("OKBtn");
  box.button(QMessageBox::Ok)->setIcon(QIcon());
  box.exec();
}

std::optional<FolderItem> SelectFolderDialog::ShowModal() {
  QWidget* parent = Front();
  QFileDialog dialog(parent, Title.empty() ? TitleOf(parent) : QString::fromStdString(Title));
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
