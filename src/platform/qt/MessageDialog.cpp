// SPDX-License-Identifier: MIT
#include "platform/qt/MessageDialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "platform/qt/FittedText.h"
#include "platform/qt/NativeText.h"
#include "platform/qt/QuitKey.h"

namespace {

constexpr int kSmallestWidth = 260;  // of the dialog, for its title
constexpr QSize kAround(80, 140);    // what frame, margins, button and the desktop's panels may take
constexpr qsizetype kFillsAnyScreen = 20'000;  // characters

/// What the text takes when its lines are short enough for the eye to find the next one, and it is no higher
/// than half as wide: as far as `most` has the room.
QSizeF TakenBy(const QString& text, const QFont& font, QSizeF most) {
  constexpr qreal kWidths[] = {320, 400, 500, 640};
  QTextLayout layout(OneParagraph(text.left(kFillsAnyScreen), Wrap::Words), font);
  QSizeF taken;
  for (const qreal width : kWidths) {
    taken = LayOutText(layout, std::min(width, most.width()), Qt::AlignLeft, Wrap::Words);
    if (taken.height() <= width / 2 || width >= most.width()) break;
  }
  return taken;
}

}  // namespace

MessageDialog::MessageDialog(QWidget* parent, const QString& title, const QString& text)
    : QDialog(parent), fText(text) {
  setObjectName("MessageBox");
  setWindowTitle(title);
  setAccessibleDescription(text);
  auto* area = new NativeText;
  area->LookLikeALabel();
  area->setObjectName("MessageBoxText");
  area->setAccessibleName(text);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  ok->setObjectName("OKBtn");
  ok->setIcon(QIcon());
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(area);
  rows->addWidget(buttons);

  const QSize most = screen()->availableSize() - kAround;
  const QSizeF taken = TakenBy(text, area->font(), most);
  QSize size(static_cast<int>(std::ceil(taken.width())) + 1, static_cast<int>(std::ceil(taken.height())) + 1);
  if (size.height() > most.height()) {
    size = QSize(size.width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent), most.height());
    area->setFocusPolicy(Qt::StrongFocus);
  }
  area->setMinimumSize(size);
  area->ShowText(text);
  setMinimumWidth(std::min(kSmallestWidth, most.width()));
  resize(rows->totalMinimumSize().expandedTo(minimumSize()));
  ok->setFocus();
}

void MessageDialog::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy))
    QGuiApplication::clipboard()->setText(fText);
  else if (!QuitsBy(*event))
    QDialog::keyPressEvent(event);
}
