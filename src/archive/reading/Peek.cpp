// SPDX-License-Identifier: MIT
#include "archive/reading/Peek.h"

#include <algorithm>
#include <cerrno>

namespace archive {

const char* Peek::At(std::uint64_t offset, std::size_t length) {
  constexpr std::size_t kAhead = 16 << 10;  // a few calls for many small entries
  if (offset >= fStart && offset - fStart <= fBytes.size() && length <= fBytes.size() - (offset - fStart))
    return fBytes.data() + (offset - fStart);
  const std::uint64_t left = fSource.Size() - std::min(offset, fSource.Size());
  if (length > left) {
    errno = 0;
    return nullptr;
  }
  fBytes.resize(std::min<std::uint64_t>(std::max(length, kAhead), left));
  fStart = offset;
  if (fSource.ReadAt(offset, fBytes.data(), fBytes.size())) return fBytes.data();
  fBytes.clear();
  return nullptr;
}

}  // namespace archive
