// SPDX-License-Identifier: MIT
#include "platform/qt/QtMachine.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QEventLoop>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include "platform/posix/Process.h"
#include "platform/posix/X11Clipboard.h"

namespace {

/// While it lives, what the user does with mouse and keyboard is dropped.
class InputDropped : public QObject {
 public:
  InputDropped() { qApp->installEventFilter(this); }
  ~InputDropped() override { qApp->removeEventFilter(this); }
  InputDropped(const InputDropped&) = delete;
  InputDropped& operator=(const InputDropped&) = delete;

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::TabletPress:
      case QEvent::TabletRelease:
        return true;
      case QEvent::Close:
        event->ignore();
        return true;
      default:
        return false;
    }
  }
};

}  // namespace

void QtMachine::DoEvents(int milliseconds) {
  const InputDropped dropped;
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void QtMachine::Yield() {
  if (fLastYield == Ticks()) return;
  const InputDropped dropped;
  QCoreApplication::processEvents();
  fLastYield = Ticks();
}

std::string QtMachine::ClipboardText() {
  const QClipboard& clipboard = *QGuiApplication::clipboard();
  if (QGuiApplication::platformName() == "xcb" && !clipboard.ownsClipboard()) {
    // The toolkit would stand still until the program that owns the text has answered.
    std::string text;
    const ClipboardAnswer answer = ReadX11Clipboard(text, [this] { DoEvents(5); });
    if (answer == ClipboardAnswer::kText) fLastText = text;
    if (answer != ClipboardAnswer::kElsewhere) return fLastText;
  }
  return clipboard.text().toStdString();
}

void QtMachine::SetClipboardText(const std::string& text) {
  fLastText = text;
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void QtMachine::LeaveClipboard() {
  const std::string text = ClipboardText();
  if (!QGuiApplication::clipboard()->ownsClipboard() || text.empty()) return;
  if (qEnvironmentVariableIsSet("DISPLAY")) StartWithText(HelperFolder() + "/TessarineClipboard", text);
}

void QtMachine::ShowURL(const std::string& address) {
  static_cast<void>(QDesktopServices::openUrl(QUrl(QString::fromStdString(address))));
}

bool QtMachine::OpenDocument(const FolderItem& item) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(item.NativePath())));
}
