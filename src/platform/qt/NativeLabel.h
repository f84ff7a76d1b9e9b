// SPDX-License-Identifier: MIT
// A label that makes its text fit the design's place.
#pragma once

#include <QLabel>
#include <functional>

#include "platform/qt/FittedText.h"

class NativeLabel : public QLabel {
  Q_OBJECT
  Q_PROPERTY(QString text MEMBER fText)

 public:
  explicit NativeLabel(Wrap wrap);
  void ShowText(const QString& text);
  void MakeLink();
  std::function<void()> fPressed;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// Left to the first painting, so that a window is on the screen before its fonts are loaded.
  void Fit();

  Wrap fWrap;
  /// Not the base class's, which loads the fonts as soon as it has a text.
  QString fText;
  FittedText fShown;
  bool fFitted = false;
};
