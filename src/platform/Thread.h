// SPDX-License-Identifier: MIT
// Work beside the main thread.
#pragma once

#include <system_error>
#include <thread>

/// A class that implements Run has Join as the first act of its destructor: behind it, the members that Run
/// uses are gone. One that forgets this ends the process with its first started object, not now and then.
class Thread {
 public:
  Thread() = default;
  virtual ~Thread() = default;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  /// Once an object. False when the system has no thread to give.
  [[nodiscard]] bool Start() {
    try {
      fThread = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
      return false;
    }
    return true;
  }

 protected:
  virtual void Run() = 0;
  /// Returns when Run has; at once if it never started.
  void Join() {
    if (fThread.joinable()) fThread.join();
  }

 private:
  std::thread fThread;
};
