// SPDX-License-Identifier: MIT
#include "platform/qt/NativeLabel.h"

#include <QFontInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <algorithm>

namespace {
constexpr int kSmallestPixels = 9;
constexpr qsizetype kLongestText = 2000;
}  // namespace

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

QString NativeLabel::OneParagraph(const QString& text) const {
  QString lines = text;
  lines.replace("\r\n", "\n").replace('\r', '\n');
  return lines.replace('\n', fWrap == Wrap::Words ? QChar(QChar::LineSeparator) : QChar(' '));
}

QSizeF NativeLabel::LayOut(QTextLayout& layout) const {
  const bool words = fWrap == Wrap::Words;
  QTextOption option(alignment() & Qt::AlignHorizontal_Mask);
  option.setWrapMode(words ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
  layout.setTextOption(option);
  QSizeF taken(0, 0);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(contentsRect().width());
    line.setPosition(QPointF(0, taken.height()));
    taken = QSizeF(std::max(taken.width(), line.naturalTextWidth()), taken.height() + line.height());
  }
  layout.endLayout();
  return taken;
}

bool NativeLabel::Fits(const QString& text, const QFont& candidate) const {
  QTextLayout layout(OneParagraph(text), candidate);
  const QSizeF taken = LayOut(layout);
  return taken.height() <= contentsRect().height() && taken.width() <= contentsRect().width();
}

void NativeLabel::Fit() {
  fFitted = true;
  fShownFont = font();
  // Far more than any place holds; each try lays the whole of it out.
  fShown = fText.left(kLongestText);
  for (int pixels = QFontInfo(font()).pixelSize(); pixels >= kSmallestPixels; --pixels) {
    if (pixels < QFontInfo(font()).pixelSize()) fShownFont.setPixelSize(pixels);
    if (Fits(fShown, fShownFont)) {
      setToolTip(QString());
      return;
    }
  }
  // Too much even so: as many characters as go in, and the whole of it as tool tip. Of a path both ends
  // tell something.
  const bool isPath = fShown.startsWith('/');
  const auto cut = [this, isPath](qsizetype length) {
    return isPath ? fShown.left(length / 2) + "…" + fShown.right(length - length / 2)
                  : fShown.left(length) + "…";
  };
  qsizetype fitting = 0;
  for (qsizetype step = fShown.size(); step > 0; step /= 2) {
    while (fitting + step <= fShown.size() && Fits(cut(fitting + step), fShownFont)) fitting += step;
  }
  setToolTip(QStringLiteral("<qt>%1</qt>").arg(fText.left(kLongestText).toHtmlEscaped()));
  fShown = cut(fitting);
}

void NativeLabel::paintEvent(QPaintEvent* /*event*/) {
  if (!fFitted) Fit();
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  QTextLayout layout(OneParagraph(fShown), fShownFont);
  const qreal height = LayOut(layout).height();
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
