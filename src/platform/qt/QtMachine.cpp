// SPDX-License-Identifier: MIT
#include "platform/qt/QtMachine.h"

#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include "base/WebAddress.h"
#include "platform/Application.h"
#include "platform/desktop/Launch.h"
#include "platform/desktop/X11Reader.h"
#include "platform/posix/Process.h"
#include "platform/posix/SystemFacts.h"
#include "platform/qt/InputDropped.h"

namespace {

/// Has nothing remain of a program that nobody waits for.
void NoteEndOf(pid_t program) {
  const int ended = OpenEndOf(program);
  if (ended < 0) return;
  auto* notifier = new QSocketNotifier(ended, QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, ended, program] {
    static_cast<void>(DetachedRuns(program));
    notifier->setEnabled(false);
    notifier->deleteLater();
    ::close(ended);
  });
}

}  // namespace

void QtMachine::DoEvents(int milliseconds) {
  // The toolkit's loops don't run any more once they have been ended.
  if (Ending()) QThread::msleep(static_cast<unsigned long>(milliseconds));
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

bool QtMachine::Ending() {
  return Application::Quitting();
}

std::string QtMachine::ClipboardText() {
  const QClipboard& clipboard = *QGuiApplication::clipboard();
  if (QGuiApplication::platformName() == "xcb" && !clipboard.ownsClipboard()) {
    // The toolkit would stand still until the program that owns the text has answered.
    std::string text;
    const ClipboardAnswer answer = ReadX11Clipboard(text, [this] {
      DoEvents(5);
      return !Ending();
    });
    if (answer == ClipboardAnswer::kText) fLastText = text;
    if (answer != ClipboardAnswer::kElsewhere) return fLastText;
  }
  const std::string text = clipboard.text().toStdString();
  return text.substr(0, text.find('\0'));
}

void QtMachine::SetClipboardText(const std::string& text) {
  fLastText = text;
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void QtMachine::LeaveClipboard() {
  if (!QGuiApplication::clipboard()->ownsClipboard() || !qEnvironmentVariableIsSet("DISPLAY")) return;
  const std::string text = ClipboardText();
  if (!text.empty()) StartWithText(HelperFolder() + "/TessarineClipboard", text);
}

void QtMachine::Beep() {
  QApplication::beep();
}

void QtMachine::ShowURL(const std::string& address) {
  // The desktop would open a file, or start a program, just as well.
  const std::string written = WebAddressOf(address);
  if (written.empty()) return;
  // The toolkit would change cases and escapes on the way; without the desktop's opener it knows others.
  const pid_t opener = StartDetached("xdg-open", {written});
  if (opener > 0)
    NoteEndOf(opener);
  else
    static_cast<void>(
        QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(written), QUrl::TolerantMode)));
}

bool QtMachine::OpenDocument(const FolderItem& item) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(item.NativePath())));
}
