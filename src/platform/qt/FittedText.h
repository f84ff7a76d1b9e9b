// SPDX-License-Identifier: MIT
// The one way in which a text is made to fit a place that was designed for another one.
#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

/// A text of one line, or of words that are wrapped. Words are broken only where one alone is too wide.
enum class Wrap { OneLine, Words };

struct FittedText {
  QString shown;
  QFont font;
  bool cut = false;  // `shown` isn't all of it
};

/// `text` in the given font where it fits `room`, else in smaller letters, else with an ellipsis. One of more
/// than 2,000 characters is always cut.
FittedText FitText(const QString& text, const QFont& font, QSizeF room, Wrap wrap);

/// The text with a line feed for each line end of another kind.
QString WithLineFeeds(QString text);

/// The text as `wrap` shows it: line ends become line separators, or blanks.
QString OneParagraph(const QString& text, Wrap wrap);

/// Breaks the layout's text into lines below each other; what they take in all.
QSizeF LayOutText(QTextLayout& layout, qreal width, Qt::Alignment alignment, Wrap wrap);

/// A tool tip that shows `text` as it stands, whatever markup and blanks it holds, and of far too long a text
/// what fills a screen; empty for an empty text.
QString PlainToolTip(const QString& text);
