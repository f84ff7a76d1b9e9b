// SPDX-License-Identifier: MIT
#include "platform/Application.h"

#include <unistd.h>

#include <QSettings>
#include <QTimer>
#include <cstdio>
#include <exception>

#include "platform/Dialogs.h"
#include "platform/qt/NativeApplication.h"

namespace {

bool gQuitting = false;
bool gConnected = false;

/// The toolkit ends the process by abort when it finds no display; this ends it in order instead.
void TakeMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type == QtFatalMsg && !gConnected) {
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

bool NativeApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    MessageBox(std::string("An unexpected error occurred: ") + error.what());
    Application::Quit(0);
    return false;
  }
}

Application::Application(int& argc, char** argv) {
  qInstallMessageHandler(TakeMessage);
  fNative = std::make_unique<NativeApplication>(argc, argv);
  gConnected = true;
  // The folder dialog would keep its size and places in the user's settings; an install leaves nothing.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
}

Application::~Application() = default;

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
