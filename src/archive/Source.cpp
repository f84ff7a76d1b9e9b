// SPDX-License-Identifier: MIT
// Reads at a place, from a file and from memory.
#include "archive/Source.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/Scramble.h"

namespace archive {

bool FileSource::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  char* at = static_cast<char*>(to);
  while (length > 0) {
    const ssize_t got = pread(fDescriptor, at, length, static_cast<off_t>(offset));
    if (got < 0 && errno == EINTR) continue;
    if (got == 0) errno = 0;
    if (got <= 0) return false;
    at += got;
    offset += static_cast<std::uint64_t>(got);
    length -= static_cast<std::size_t>(got);
  }
  return true;
}

bool ScrambledSource::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  if (!FileSource::ReadAt(offset, to, length)) return false;
  UnscrambleBytes(static_cast<char*>(to), length, offset);
  return true;
}

bool MemorySource::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  errno = 0;
  if (offset > fBytes.size() || length > fBytes.size() - offset) return false;
  if (length > 0) std::memcpy(to, fBytes.data() + offset, length);
  return true;
}

}  // namespace archive
