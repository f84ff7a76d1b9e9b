// SPDX-License-Identifier: MIT
// The toolkit breaks a paragraph into lines as a whole, which takes a time that grows with the square of its
// longest word, and remembers each paragraph by itself. So that a text of a megabyte is on the screen at
// once, whatever it holds, a long paragraph is made of several blocks here, and of far too many lines several
// make one block.
#include "platform/qt/NativeText.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <vector>

#include "platform/qt/FittedText.h"

namespace {

constexpr qsizetype kLargestBlock = 5000;       // characters; about a millisecond's work
constexpr qsizetype kMostParagraphs = 100'000;  // that get a block each
constexpr int kGoesOn = 1;                      // state of a block whose paragraph goes on in the next one

/// Where a block that begins at `from` ends: behind a blank, or else between two characters.
qsizetype EndOfBlock(const QString& text, qsizetype from, qsizetype end) {
  if (end - from <= kLargestBlock) return end;
  const qsizetype most = from + kLargestBlock;
  for (qsizetype at = most; at > most - kLargestBlock / 10; --at)
    if (text[at - 1] == ' ') return at;
  qsizetype at = most;
  while (at > from + 1 && (text[at].isLowSurrogate() || text[at].isMark())) --at;
  return at;
}

/// Numbers of the blocks that go on, and the text with an end of paragraph behind each block.
struct Blocks {
  QString text;
  std::vector<int> goingOn;
};

Blocks InBlocks(const QString& lines) {
  const bool joins = lines.count('\n') > kMostParagraphs;
  Blocks blocks;
  blocks.text.reserve(lines.size() + lines.size() / 1000);
  int number = 0;
  qsizetype begun = 0;  // where in `blocks.text` the newest block begins
  for (qsizetype from = 0; from <= lines.size();) {
    const qsizetype newline = lines.indexOf('\n', from);
    const qsizetype end = newline < 0 ? lines.size() : newline;
    const qsizetype cut = EndOfBlock(lines, from, end);
    blocks.text += QStringView(lines).mid(from, cut - from);
    if (cut == end && newline < 0) break;
    const bool joined = cut == end && joins && blocks.text.size() - begun < kLargestBlock;
    blocks.text += joined ? QChar(QChar::LineSeparator) : QChar('\n');
    if (cut < end) blocks.goingOn.push_back(number);
    if (!joined) {
      ++number;
      begun = blocks.text.size();
    }
    from = cut < end ? cut : end + 1;
  }
  return blocks;
}

}  // namespace

NativeText::NativeText() {
  setReadOnly(true);
  setTabChangesFocus(true);
  // All of it stands between the edges; the toolkit remembers the widest line of an earlier width, too.
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this,
          [bar = horizontalScrollBar()] { bar->setRange(0, 0); });
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void NativeText::LookLikeALabel() {
  setFrameShape(QFrame::NoFrame);
  document()->setDocumentMargin(0);
  setFocusPolicy(Qt::ClickFocus);
  QPalette colours = palette();
  colours.setColor(QPalette::Base, colours.color(QPalette::Window));
  colours.setColor(QPalette::Text, colours.color(QPalette::WindowText));
  setPalette(colours);
}

void NativeText::ShowText(const QString& text) {
  const Blocks blocks = InBlocks(WithLineFeeds(text));
  setPlainText(blocks.text);
  for (const int number : blocks.goingOn) document()->findBlockByNumber(number).setUserState(kGoesOn);
}

/// The characters as they were given; the toolkit's own copy makes a blank of one that doesn't break.
QMimeData* NativeText::createMimeDataFromSelection() const {
  const QTextCursor selected = textCursor();
  QString text;
  for (QTextBlock block = document()->findBlock(selected.selectionStart());
       block.isValid() && block.position() < selected.selectionEnd(); block = block.next()) {
    const int from = std::max(selected.selectionStart() - block.position(), 0);
    const int end = std::min(selected.selectionEnd() - block.position(), block.length());
    text += QStringView(block.text()).mid(from, std::min(end, block.length() - 1) - from);
    if (end == block.length() && block.userState() != kGoesOn) text += '\n';
  }
  auto* copied = new QMimeData;
  copied->setText(text.replace(QChar(QChar::LineSeparator), '\n'));
  return copied;
}

void NativeText::keyPressEvent(QKeyEvent* event) {
  // With nothing selected there is nothing to copy here; the window may know more.
  if (event->matches(QKeySequence::Copy) && !textCursor().hasSelection())
    event->ignore();
  else
    QPlainTextEdit::keyPressEvent(event);
}
