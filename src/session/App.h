// SPDX-License-Identifier: MIT
// The application object: from the process's start to the one window, and to the end of the run.
#pragma once

#include <memory>

#include "platform/Application.h"
#include "session/TessarineStubWindow.h"

class App {
 public:
  explicit App(Application& application) : fApplication(application) {}

  /// One run on the current machine. The exit status, which is 0 however it went.
  int Run();

 private:
  void Event_Open();
  void LateStartup();

  Application& fApplication;
  std::unique_ptr<TessarineStubWindow> fDefaultView;
};
