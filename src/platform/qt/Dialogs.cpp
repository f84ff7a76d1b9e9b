// SPDX-License-Identifier: MIT
#include "platform/Dialogs.h"

#include <QApplication>

#include "platform/Application.h"
#include "platform/Machine.h"
#include "platform/qt/FolderDialog.h"
#include "platform/qt/MessageDialog.h"
#include "platform/qt/NativeWindow.h"
#include "platform/qt/Verbatim.h"

namespace {

/// The window that a dialog belongs to: the one that takes input, or the newest one on the screen.
QWidget* Front() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  NativeWindow* front = NativeWindow::Newest();
  return front != nullptr && front->isVisible() ? front : nullptr;
}

/// Of the window in front, or of the main window while none is on the screen yet.
QString FrontTitle() {
  const QWidget* front = Front();
  if (front == nullptr) front = NativeWindow::Newest();
  return front == nullptr ? QString(' ') : front->windowTitle();
}

}  // namespace

void MessageBox(const std::string& text) {
  // What was typed before the message could be seen is no answer to it.
  Machine::Current().DoEvents(0);
  if (Application::Quitting()) return;
  MessageDialog(Front(), FrontTitle(), QString::fromStdString(text)).exec();
}

std::optional<FolderItem> SelectFolderDialog::ShowModal() {
  if (Application::Quitting()) return std::nullopt;
  FolderDialog dialog(Front(), Title.empty() ? FrontTitle() : VerbatimTitle(Title));
  dialog.setLabelText(QFileDialog::Accept, WithoutMnemonic(CaptionLine(ActionButtonCaption)));
  if (!CancelButtonCaption.empty())
    dialog.setLabelText(QFileDialog::Reject, WithoutMnemonic(CaptionLine(CancelButtonCaption)));
  if (InitialDirectory) dialog.setDirectory(QString::fromStdString(InitialDirectory->NativePath()));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return FolderItem(dialog.Chosen().toStdString());
}
