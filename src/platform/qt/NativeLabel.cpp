// SPDX-License-Identifier: MIT
#include "platform/qt/NativeLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <algorithm>

NativeLabel::NativeLabel(Wrap wrap) : fWrap(wrap) {
  setTextFormat(Qt::PlainText);
  setAlignment(wrap == Wrap::Words ? Qt::AlignLeft | Qt::AlignTop : Qt::AlignLeft | Qt::AlignVCenter);
}

void NativeLabel::ShowText(const QString& text) {
  fText = text;
  setAccessibleName(text);
  fFitted = false;
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

/// Too much even in small letters: the whole of it is the tool tip.
void NativeLabel::Fit() {
  fFitted = true;
  fShown = FitText(fText, font(), contentsRect().size(), fWrap);
  setToolTip(PlainToolTip(fShown.cut ? fText : QString()));
}

void NativeLabel::paintEvent(QPaintEvent* /*event*/) {
  if (!fFitted) Fit();
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  QTextLayout layout(OneParagraph(fShown.shown, fWrap), fShown.font);
  const qreal height = LayOutText(layout, contentsRect().width(), alignment(), fWrap).height();
  QPointF corner = contentsRect().topLeft();
  if (alignment().testFlag(Qt::AlignVCenter))
    corner.ry() += std::max(0.0, (contentsRect().height() - height) / 2);
  layout.draw(&painter, corner);
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void NativeLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  fFitted = false;
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
