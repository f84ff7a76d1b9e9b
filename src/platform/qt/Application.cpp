// SPDX-License-Identifier: MIT
#include "platform/Application.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSettings>
#include <QSocketNotifier>
#include <QTimer>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include "base/Descriptor.h"
#include "platform/qt/NativeApplication.h"

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

Application::Application(int& argc, char** argv, const std::function<bool()>& sharesClipboard) {
  const bool hasBoth =
      qEnvironmentVariableIsSet("DISPLAY") &&
      (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland");
  const bool throughX11 = hasBoth && !qEnvironmentVariableIsSet(kPlatform) && sharesClipboard();
  if (throughX11) qputenv(kPlatform, "xcb;wayland");
  qInstallMessageHandler(TakeMessage);
  const Descriptor errorOutput(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
  const Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
  if (errorOutput && nowhere) ::dup2(nowhere.Get(), STDERR_FILENO);
  gErrorOutput = errorOutput.Get();
  fNative = std::make_unique<NativeApplication>(argc, argv);
  gConnected = true;
  if (throughX11) qunsetenv(kPlatform);  // no matter of the programs that this one starts
  if (errorOutput) ::dup2(errorOutput.Get(), STDERR_FILENO);
  gErrorOutput = -1;
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
