// SPDX-License-Identifier: MIT
#include "platform/qt/FittedText.h"

#include <QFontInfo>
#include <QStyle>
#include <QTextBoundaryFinder>
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

constexpr qsizetype kLongestCharacter = 64;  // with all of its marks

/// The first `length` units of a text, or fewer: what is one character to the reader isn't parted.
QString Head(const QString& text, qsizetype length) {
  const QString near = text.left(length + kLongestCharacter);
  QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, near);
  characters.setPosition(length);
  if (!characters.isAtBoundary()) length = characters.toPreviousBoundary();
  return near.left(std::max<qsizetype>(length, 0));
}

/// The last ones, likewise.
QString Tail(const QString& text, qsizetype length) {
  const QString near = text.right(length + kLongestCharacter);
  QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, near);
  qsizetype begin = near.size() - length;
  characters.setPosition(begin);
  if (!characters.isAtBoundary()) begin = characters.toNextBoundary();
  return begin < 0 ? QString() : near.mid(begin);
}

/// Of a path both ends tell something.
QString Cut(const QString& text, qsizetype length) {
  if (!text.startsWith('/')) return Head(text, length) + "…";
  return Head(text, length / 2) + "…" + Tail(text, length - length / 2);
}

}  // namespace

QString WithLineFeeds(QString text) {
  return text.replace("\r\n", "\n").replace('\r', '\n').replace(QChar(QChar::ParagraphSeparator), '\n');
}

QString OneParagraph(const QString& text, Wrap wrap) {
  const QChar between = wrap == Wrap::Words ? QChar(QChar::LineSeparator) : QChar(' ');
  return WithLineFeeds(text).replace('\n', between).replace(QChar(QChar::LineSeparator), between);
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
  FittedText fitted{text, font};
  if (text.isEmpty()) return fitted;
  for (int pixels = QFontInfo(font).pixelSize(); pixels >= kSmallestPixels; --pixels) {
    if (pixels < QFontInfo(font).pixelSize()) fitted.font.setPixelSize(pixels);
    if (text.size() <= kLongestText && Fits(text, fitted.font, room, wrap)) return fitted;
  }
  // Too much even so: as many characters as go in.
  fitted.cut = true;
  const qsizetype most = std::min(text.size(), kLongestText);
  qsizetype fitting = 0;
  for (qsizetype step = most; step > 0; step /= 2) {
    while (fitting + step <= most && Fits(Cut(text, fitting + step), fitted.font, room, wrap))
      fitting += step;
  }
  fitted.shown = Cut(text, fitting);
  return fitted;
}

QString PlainToolTip(const QString& text) {
  constexpr qsizetype kFillsAnyScreen = 10'000, kLongestWord = 60;
  if (text.isEmpty()) return text;
  const QString lines = WithLineFeeds(text.size() <= kFillsAnyScreen ? text : Cut(text, kFillsAnyScreen));
  // The toolkit breaks tool tips at words alone, and would leave the screen with a long one.
  QString broken;
  for (const QString& word : lines.split(' ')) {
    for (QString rest = word; !rest.isEmpty();) {
      const QString part = Head(rest, std::min(rest.size(), kLongestWord));
      broken += part;
      rest.remove(0, part.isEmpty() ? rest.size() : part.size());
      if (!rest.isEmpty()) broken += QChar(0x200B);  // without a width
    }
    broken += ' ';
  }
  broken.chop(1);
  return "<qt><p style=\"white-space: pre-wrap\">" + broken.toHtmlEscaped() + "</p></qt>";
}
