// SPDX-License-Identifier: MIT
// The process's connection to the display, and its event loop.
#pragma once

#include <functional>
#include <memory>

class NativeApplication;

class Application {
 public:
  /// Connects to the display. Where there is none, says so in one sentence on the error output and
  /// ends the process with status 0. `argc` and `argv` must outlive the object.
  /// On a desktop that has Wayland and X11, Wayland is taken unless `sharesClipboard`, which is asked only
  /// then, says that the run needs the clipboard also while another window is in front.
  Application(int& argc, char** argv, const std::function<bool()>& sharesClipboard);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Runs the event loop until Quit; `opened` is its first event. The exit status.
  int Run(const std::function<void()>& opened);

  /// From now on SIGTERM, SIGINT and SIGHUP, unless they are ignored, quit as below.
  void QuitOnSignals();

  /// Ends the event loop once the present event is done. The caller returns to it, and
  /// no further window appears on the way.
  static void Quit(int status);
  /// True from Quit on, until the next Run.
  static bool Quitting();

 private:
  std::unique_ptr<NativeApplication> fNative;
};
