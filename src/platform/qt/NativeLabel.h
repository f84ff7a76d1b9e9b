// SPDX-License-Identifier: MIT
// A label that makes its text fit the design's place.
#pragma once

#include <QLabel>
#include <functional>

class NativeLabel : public QLabel {
  Q_OBJECT

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
  int Flags() const;
  bool Fits(const QString& text, const QFont& candidate) const;
  void Fit();

  Wrap fWrap;
  QFont fDesignFont;
  QFont fShownFont;
  QString fShown;
};
