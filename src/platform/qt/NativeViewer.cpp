// SPDX-License-Identifier: MIT
#include "platform/qt/NativeViewer.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextBoundaryFinder>
#include <algorithm>

#include "base/Blanks.h"
#include "base/WebAddress.h"
#include "platform/Machine.h"

namespace {

/// In characters, between two places where a line may end.
qsizetype LongestWord(const QString& text) {
  QTextBoundaryFinder words(QTextBoundaryFinder::Line, text);
  qsizetype longest = 0;
  for (qsizetype from = 0, end = words.toNextBoundary(); end >= 0; from = end, end = words.toNextBoundary())
    longest = std::max(longest, end - from);
  return longest;
}

}  // namespace

NativeViewer::NativeViewer() {
  setOpenLinks(false);
  setFrameShape(QFrame::NoFrame);
  // A page counts on black text on white paper, whatever the desktop's colours.
  QPalette paper = palette();
  paper.setColor(QPalette::Base, Qt::white);
  paper.setColor(QPalette::Text, Qt::black);
  paper.setColor(QPalette::Link, QColor(0, 0, 238));
  setPalette(paper);
  connect(this, &QTextBrowser::anchorClicked, this, &NativeViewer::Follow);
}

void NativeViewer::ShowPage(const QString& html) {
  constexpr qsizetype kLongestWhole = 10'000;
  setHtml(html);
  // Breaking lines between words takes a time that grows with the square of the longest one.
  const bool words = LongestWord(document()->toRawText()) <= kLongestWhole;
  setWordWrapMode(words ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WrapAnywhere);
}

QVariant NativeViewer::loadResource(int type, const QUrl& name) {
  // Without an answer the toolkit would look for a picture's name among the files of the disk.
  QImage nothing(1, 1, QImage::Format_ARGB32);
  nothing.fill(Qt::transparent);
  if (name.scheme() != "data")
    return type == QTextDocument::ImageResource ? QVariant(nothing) : QVariant(QByteArray());
  const QByteArray path = name.path(QUrl::FullyEncoded).toLatin1();
  const qsizetype comma = path.indexOf(',');
  const QByteArray content = QByteArray::fromPercentEncoding(path.mid(comma + 1));
  const QByteArray bytes = path.left(comma).endsWith(";base64") ? QByteArray::fromBase64(content) : content;
  if (type != QTextDocument::ImageResource) return bytes;
  const QImage picture = QImage::fromData(bytes);
  return picture.isNull() ? nothing : picture;
}

/// The toolkit's own account of a link that was clicked changes its case and its escapes.
void NativeViewer::mouseReleaseEvent(QMouseEvent* event) {
  fLink = anchorAt(event->pos());
  QTextBrowser::mouseReleaseEvent(event);
}

void NativeViewer::keyPressEvent(QKeyEvent* event) {
  QTextCursor focused = textCursor();
  focused.setPosition(focused.selectionStart());
  focused.movePosition(QTextCursor::NextCharacter);
  fLink = focused.charFormat().anchorHref();
  QTextBrowser::keyPressEvent(event);
}

void NativeViewer::Follow() {
  const std::string link = WithoutBlanksAround(fLink.toStdString());
  const std::string address = WebAddressOf(link);
  if (link.starts_with('#'))
    scrollToAnchor(QUrl::fromPercentEncoding(QByteArray::fromStdString(link.substr(1))));
  else if (!address.empty())
    Machine::Current().ShowURL(address);
}
