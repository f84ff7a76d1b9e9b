// SPDX-License-Identifier: MIT
// The installer: one run is one install.
#include <csignal>

#include "platform/qt/QtMachine.h"
#include "session/App.h"

int main(int argc, char** argv) {
  // A helper or program that ends while it is written to must not end the install.
  std::signal(SIGPIPE, SIG_IGN);
  // Started by a program that ignores its children's ends, this one would never learn how its own ended.
  std::signal(SIGCHLD, SIG_DFL);
  Application application(argc, argv);
  QtMachine machine;
  Machine::Install(&machine);
  return App(application).Run();
}
