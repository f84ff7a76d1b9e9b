// SPDX-License-Identifier: MIT
#include "platform/qt/FittedText.h"

#include <QFontInfo>
#include <QStyle>
#include <algorithm>

namespace {

constexpr int kSmallestPixels = 9;
/// Far more than any place holds; each try lays the whole of it out.
constexpr qsizetype kLongestText = 2000;

bool Fits(const QString& text, const QFont& font, QSizeF room, Wrap wrap) {
  QTextLayout layout(OneParagraph(text, wrap), font);
  const QSizeF taken = LayOutText(layout, room.width(), Qt::AlignLeft, wrap);
  return taken.height() <= room.height() && taken.width() <= room.width();
}

/// Of a path both ends tell something.
QString Cut(const QString& text, qsizetype length) {
  if (!text.startsWith('/')) return text.left(length) + "…";
  return text.left(length / 2) + "…" + text.right(length - length / 2);
}

}  // namespace

QString OneParagraph(const QString& text, Wrap wrap) {
  QString lines = text;
  lines.replace("\r\n", "\n").replace('\r', '\n');
  return lines.replace('\n', wrap == Wrap::Words ? QChar(QChar::LineSeparator) : QChar(' '));
}

QSizeF LayOutText(QTextLayout& layout, qreal width, Qt::Alignment alignment, Wrap wrap) {
  // "Left" is where reading begins.
  const Qt::LayoutDirection direction = layout.text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
  QTextOption option(QStyle::visualAlignment(direction, alignment) & Qt::AlignHorizontal_Mask);
  option.setWrapMode(wrap == Wrap::Words ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
  layout.setTextOption(option);
  QSizeF taken(0, 0);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition(QPointF(0, taken.height()));
    taken = QSizeF(std::max(taken.width(), line.naturalTextWidth()), taken.height() + line.height());
  }
  layout.endLayout();
  return taken;
}

FittedText FitText(const QString& text, const QFont& font, QSizeF room, Wrap wrap) {
  FittedText fitted{text.left(kLongestText), font};
  for (int pixels = QFontInfo(font).pixelSize(); pixels >= kSmallestPixels; --pixels) {
    if (pixels < QFontInfo(font).pixelSize()) fitted.font.setPixelSize(pixels);
    if (Fits(fitted.shown, fitted.font, room, wrap)) return fitted;
  }
  // Too much even so: as many characters as go in.
  fitted.cut = true;
  qsizetype fitting = 0;
  for (qsizetype step = fitted.shown.size(); step > 0; step /= 2) {
    while (fitting + step <= fitted.shown.size() &&
           Fits(Cut(fitted.shown, fitting + step), fitted.font, room, wrap))
      fitting += step;
  }
  fitted.shown = Cut(fitted.shown, fitting);
  return fitted;
}

QString PlainToolTip(const QString& text) {
  if (text.isEmpty()) return text;
  const QString escaped = text.left(kLongestText).toHtmlEscaped().replace('\n', "<br>");
  return QStringLiteral("<qt>%1</qt>").arg(escaped);
}
