// SPDX-License-Identifier: MIT
// The message box: a text as it stands, and one button.
#pragma once

#include <QDialog>

class MessageDialog : public QDialog {
  Q_OBJECT

 public:
  /// As large as its text, or as the screen if that is smaller: then the text scrolls.
  MessageDialog(QWidget* parent, const QString& title, const QString& text);

 protected:
  /// Copies the whole text where the user has selected none.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString fText;
};
