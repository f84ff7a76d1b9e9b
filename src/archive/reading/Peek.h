// SPDX-License-Identifier: MIT
// A window that moves over the archive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "archive/Source.h"

namespace archive {

/// Reads small pieces at rising places with few calls.
class Peek {
 public:
  explicit Peek(const Source& source) : fSource(source) {}
  /// `length` bytes at `offset`, valid until the next call; nullptr if they can't be read.
  const char* At(std::uint64_t offset, std::size_t length);

 private:
  const Source& fSource;
  std::uint64_t fStart = 0;
  std::vector<char> fBytes;
};

}  // namespace archive
