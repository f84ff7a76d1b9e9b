// SPDX-License-Identifier: MIT
#include "platform/qt/NativeLabel.h"

#include <QFontInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace {
constexpr int kSmallestPixels = 9;
}

NativeLabel::NativeLabel(Wrap wrap) : fWrap(wrap) {
  setTextFormat(Qt::PlainText);
  setWordWrap(wrap == Wrap::Words);
  setAlignment(wrap == Wrap::Words ? Qt::AlignLeft | Qt::AlignTop : Qt::AlignLeft | Qt::AlignVCenter);
}

void NativeLabel::ShowText(const QString& text) {
  setText(text);
  setAccessibleName(text);
  Fit();
  update();
}

void NativeLabel::MakeLink() {
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  QPalette blue = palette();
  blue.setColor(QPalette::WindowText, QColor(0, 0, 255));
  setPalette(blue);
  setAlignment(Qt::AlignCenter);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
}

int NativeLabel::Flags() const {
  const int wrapping = fWrap == Wrap::Words ? Qt::TextWordWrap : Qt::TextSingleLine;
  return static_cast<int>(alignment()) | wrapping;
}

bool NativeLabel::Fits(const QString& text, const QFont& candidate) const {
  const QFontMetrics metrics(candidate);
  const QRect wanted = metrics.boundingRect(contentsRect(), Flags(), text);
  return wanted.width() <= contentsRect().width() && wanted.height() <= contentsRect().height();
}

void NativeLabel::Fit() {
  fShownFont = font();
  fShown = text();
  for (int pixels = QFontInfo(font()).pixelSize(); pixels >= kSmallestPixels; --pixels) {
    if (pixels < QFontInfo(font()).pixelSize()) fShownFont.setPixelSize(pixels);
    if (Fits(fShown, fShownFont)) {
      setToolTip(QString());
      return;
    }
  }
  // Too much even so: as many characters as go in, and the whole of it as tool tip.
  qsizetype fitting = 0;
  for (qsizetype step = fShown.size(); step > 0; step /= 2) {
    while (fitting + step <= fShown.size() && Fits(fShown.left(fitting + step) + "…", fShownFont))
      fitting += step;
  }
  setToolTip(QStringLiteral("<qt>%1</qt>").arg(text().toHtmlEscaped()));
  fShown = fShown.left(fitting) + "…";
}

void NativeLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(fShownFont);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(contentsRect(), Flags(), fShown);
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void NativeLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Fit();
}

void NativeLabel::mousePressEvent(QMouseEvent* event) {
  QLabel::mousePressEvent(event);
  if (fPressed) fPressed();
}

void NativeLabel::keyPressEvent(QKeyEvent* event) {
  const bool activates =
      event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
  if (activates && fPressed)
    fPressed();
  else
    QLabel::keyPressEvent(event);
}
