// SPDX-License-Identifier: MIT
// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int value) : fValue(value) {}
  Descriptor(Descriptor&& other) noexcept : fValue(std::exchange(other.fValue, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    Descriptor taken(std::move(other));
    std::swap(fValue, taken.fValue);
    return *this;
  }
  ~Descriptor() {
    if (fValue >= 0) ::close(fValue);
  }
  int Get() const { return fValue; }
  explicit operator bool() const { return fValue >= 0; }
  /// False when the system tells of a failed write only now: close(2).
  [[nodiscard]] bool Close() { return ::close(Release()) == 0 || errno == EINTR; }
  /// Gives the descriptor away.
  int Release() { return std::exchange(fValue, -1); }

 private:
  int fValue = -1;
};
