// SPDX-License-Identifier: MIT
#include "platform/Application.h"

#include <fcntl.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QKeyEvent>
#include <QSettings>
#include <QSocketNotifier>
#include <QTimer>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <utility>

#include "platform/Dialogs.h"
#include "platform/qt/NativeApplication.h"
#include "platform/qt/NativeKeyboard.h"

namespace {

constexpr char kPlatform[] = "QT_QPA_PLATFORM";
bool gQuitting = false;
bool gConnected = false;
int gSignalled = -1;    // the end of a pipe that a signal writes to
int gErrorOutput = -1;  // while libraries below the toolkit are kept from writing to it

/// The toolkit ends the process by abort when it finds no display; this ends it in order instead.
void TakeMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type == QtFatalMsg && !gConnected) {
    if (gErrorOutput >= 0) ::dup2(gErrorOutput, STDERR_FILENO);
    std::fputs("This installer needs a graphical display, and none can be reached.\n", stderr);
    std::fflush(stderr);
    ::_exit(0);
  }
  if (gConnected && type != QtDebugMsg && type != QtInfoMsg)
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

}  // namespace

NativeApplication::NativeApplication(int& argc, char** argv) : QApplication(argc, argv) {
  setQuitOnLastWindowClosed(false);
}

/// A key held down answers one question, not the next ones too. The X server repeats a key by a release and a
/// press of the same time; the toolkit takes the press for a new one if it comes a moment after its release.
bool NativeApplication::IsHeldKey(const QObject* receiver, const QEvent* event) {
  static std::pair<int, quint64> released;
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  const std::pair now(key->key(), key->timestamp());
  if (event->type() == QEvent::KeyRelease) {
    released = now;
    return false;
  }
  if (!key->isAutoRepeat() && (key->timestamp() == 0 || now != released)) return false;
  if (key->key() == Qt::Key_Space) return qobject_cast<const QAbstractButton*>(receiver) != nullptr;
  return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape;
}

bool NativeApplication::notify(QObject* receiver, QEvent* event) {
  FollowKeys(*event);
  if (IsHeldKey(receiver, event)) return true;
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    MessageBox(std::string("An unexpected error occurred: ") + error.what());
    Application::Quit(0);
    return false;
  }
}

Application::Application(int& argc, char** argv, const std::function<bool()>& sharesClipboard) {
  const bool hasBoth =
      qEnvironmentVariableIsSet("DISPLAY") &&
      (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland");
  const bool throughX11 = hasBoth && !qEnvironmentVariableIsSet(kPlatform) && sharesClipboard();
  if (throughX11) qputenv(kPlatform, "xcb;wayland");
  qInstallMessageHandler(TakeMessage);
  gErrorOutput = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  ::dup2(nowhere, STDERR_FILENO);
  fNative = std::make_unique<NativeApplication>(argc, argv);
  gConnected = true;
  if (throughX11) qunsetenv(kPlatform);  // no matter of the programs that this one starts
  ::dup2(gErrorOutput, STDERR_FILENO);
  ::close(nowhere);
  ::close(gErrorOutput);
  // The folder dialog would keep its size and places in the user's settings; an install leaves nothing.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
}

Application::~Application() = default;

void Application::QuitOnSignals() {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  gSignalled = ends[1];  // open as long as the process
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, fNative.get());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
    notifier->setEnabled(false);
    Quit(0);
  });
  struct sigaction quit {};
  quit.sa_handler = [](int) {
    const int before = errno;
    static_cast<void>(::write(gSignalled, "", 1));  // full: there is one to be heard already
    errno = before;
  };
  quit.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction now {};
    if (::sigaction(signal, nullptr, &now) == 0 && now.sa_handler != SIG_IGN)
      ::sigaction(signal, &quit, nullptr);
  }
}

int Application::Run(const std::function<void()>& opened) {
  gQuitting = false;
  QTimer::singleShot(0, fNative.get(), opened);
  return QApplication::exec();
}

void Application::Quit(int status) {
  gQuitting = true;
  QCoreApplication::exit(status);
}

bool Application::Quitting() {
  return gQuitting;
}
