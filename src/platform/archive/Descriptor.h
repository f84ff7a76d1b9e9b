// SPDX-License-Identifier: MIT
// An open file descriptor and who closes it.
#pragma once

#include <unistd.h>

#include <utility>

namespace archive {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : fNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : fNumber(std::exchange(other.fNumber, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fNumber, other.fNumber);
    return *this;
  }
  ~Descriptor() {
    if (fNumber >= 0) close(fNumber);  // nothing was promised that only close could break
  }
  int Number() const { return fNumber; }
  explicit operator bool() const { return fNumber >= 0; }
  /// Gives the number away.
  int Release() { return std::exchange(fNumber, -1); }

 private:
  int fNumber = -1;
};

}  // namespace archive
