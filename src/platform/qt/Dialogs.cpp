// SPDX-License-Identifier: MIT
#include "platform/Dialogs.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Application.h"
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

void NameMessage(QDialog& dialog, QPushButton& ok) {
  dialog.setObjectName("MessageBox");
  ok.setObjectName("OKBtn");
  ok.setIcon(QIcon());
}

/// A box as large as its text would leave the screen, or cut the text off.
bool IsLong(const QString& text) {
  constexpr qsizetype kMostCharacters = 600, kMostLines = 15, kLongestWord = 60;
  if (text.size() > kMostCharacters || text.count('\n') >= kMostLines) return true;
  qsizetype word = 0;
  return std::any_of(text.begin(), text.end(), [&](QChar character) {
    word = character.isSpace() ? 0 : word + 1;
    return word > kLongestWord;
  });
}

void ShowScrolled(const QString& text) {
  constexpr int kWidth = 480;
  QDialog dialog(Front());
  dialog.setWindowTitle(FrontTitle());
  auto* area = new QPlainTextEdit(text);
  area->setReadOnly(true);
  area->setTabChangesFocus(true);
  area->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  area->setAccessibleName(text);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  auto* rows = new QVBoxLayout(&dialog);
  rows->addWidget(area);
  rows->addWidget(buttons);
  NameMessage(dialog, *buttons->button(QDialogButtonBox::Ok));
  buttons->button(QDialogButtonBox::Ok)->setFocus();
  dialog.resize(kWidth, dialog.screen()->availableSize().height() / 2);
  dialog.exec();
}

}  // namespace

void MessageBox(const std::string& text) {
  // What was typed before the message could be seen is no answer to it.
  Machine::Current().DoEvents(0);
  if (Application::Quitting()) return;
  constexpr int kSmallestWidth = 260;
  const QString shown = QString::fromStdString(text);
  if (IsLong(shown)) {
    ShowScrolled(shown);
    return;
  }
  QMessageBox box(QMessageBox::NoIcon, FrontTitle(), shown, QMessageBox::Ok, Front());
  box.setTextFormat(Qt::PlainText);
  // Wide enough for the title too. The label keeps its own measure: a minimum of ours would cut its text.
  if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
    grid->addItem(new QSpacerItem(kSmallestWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
  NameMessage(box, *static_cast<QPushButton*>(box.button(QMessageBox::Ok)));
  box.exec();
}

std::optional<FolderItem> SelectFolderDialog::ShowModal() {
  if (Application::Quitting()) return std::nullopt;
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
