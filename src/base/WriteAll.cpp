// SPDX-License-Identifier: MIT
#include "base/WriteAll.h"

#include <unistd.h>

#include <cerrno>

namespace {

template <class Write>
bool WriteBy(const Write& write, const char* at, std::size_t count) {
  while (count > 0) {
    const ssize_t done = write(at, count);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return false;
    at += done;
    count -= static_cast<std::size_t>(done);
  }
  return true;
}

}  // namespace

bool WriteAll(int file, const void* bytes, std::size_t count) {
  const auto put = [file](const char* at, std::size_t length) { return ::write(file, at, length); };
  return WriteBy(put, static_cast<const char*>(bytes), count);
}

bool WriteAllAt(int file, const void* bytes, std::size_t count, std::uint64_t offset) {
  const char* const start = static_cast<const char*>(bytes);
  const auto put = [&](const char* at, std::size_t length) {
    return ::pwrite(file, at, length, static_cast<off_t>(offset) + (at - start));
  };
  return WriteBy(put, start, count);
}
