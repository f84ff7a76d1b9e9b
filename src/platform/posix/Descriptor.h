// SPDX-License-Identifier: MIT
// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

class Descriptor {
 public:
  explicit Descriptor(int value = -1) : fValue(value) {}
  Descriptor(Descriptor&& other) noexcept : fValue(std::exchange(other.fValue, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fValue, other.fValue);
    return *this;
  }
  ~Descriptor() {
    if (fValue >= 0) ::close(fValue);
  }
  int Get() const { return fValue; }
  bool Valid() const { return fValue >= 0; }
  int Release() { return std::exchange(fValue, -1); }

 private:
  int fValue;
};
