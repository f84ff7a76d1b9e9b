// SPDX-License-Identifier: MIT
// A label that makes its text fit the design's place.
#pragma once

#include <QLabel>
#include <QTextLayout>
#include <functional>

class NativeLabel : public QLabel {
  Q_OBJECT
  Q_PROPERTY(QString text MEMBER fText)

 public:
  enum class Wrap { OneLine, Words };
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
  /// Breaks `text` into the lines of `layout`; what they take in all. Words are broken only where one
  /// alone is wider than the label.
  QSizeF LayOut(QTextLayout& layout) const;
  QString OneParagraph(const QString& text) const;
  bool Fits(const QString& text, const QFont& candidate) const;
  /// Left to the first painting, so that a window is on the screen before its fonts are loaded.
  void Fit();

  Wrap fWrap;
  /// Not the base class's, which loads the fonts as soon as it has a text.
  QString fText;
  QFont fShownFont;
  QString fShown;
  bool fFitted = false;
};
