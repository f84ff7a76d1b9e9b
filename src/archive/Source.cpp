// SPDX-License-Identifier: MIT
// Reads at a place, from a file and from memory.
#include "archive/Source.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

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
  auto* bytes = static_cast<unsigned char*>(to);
  for (std::size_t i = offset % 2 == 0 ? 1 : 0; i < length; i += 2) --bytes[i];
  return true;
}

bool MemorySource::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  errno = 0;
  if (offset > fBytes.size() || length > fBytes.size() - offset) return false;
  if (length > 0) std::memcpy(to, fBytes.data() + offset, length);
  return true;
}

}  // namespace archive
