// SPDX-License-Identifier: MIT
// A read-only plain text that scrolls and can be selected, of any length.
#pragma once

#include <QPlainTextEdit>

class NativeText : public QPlainTextEdit {
  Q_OBJECT

 public:
  NativeText();
  /// No frame, the window's colours, and the focus only for selecting.
  void LookLikeALabel();
  void ShowText(const QString& text);

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  void keyPressEvent(QKeyEvent* event) override;
};
