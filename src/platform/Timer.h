// SPDX-License-Identifier: MIT
// An action after a while, or again and again.
#pragma once

#include <functional>
#include <memory>

class NativeTimer;

/// Belongs to the main thread, whose event loop runs the action.
class Timer {
 public:
  enum class Mode { Off, Single, Multiple };
  /// `period` is in milliseconds, as Machine::TimerPeriod takes them. The first period begins now.
  Timer(int period, Mode mode);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  /// Begins a period anew, or ends all.
  void SetMode(Mode mode);
  void OnAction(std::function<void()> action);

 private:
  std::unique_ptr<NativeTimer> fNative;
};
