// SPDX-License-Identifier: MIT
#include "base/WriteAll.h"

#include <unistd.h>

#include <cerrno>

bool WriteAll(int file, const void* bytes, std::size_t count) {
  const char* at = static_cast<const char*>(bytes);
  while (count > 0) {
    const ssize_t done = ::write(file, at, count);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return false;
    at += done;
    count -= static_cast<std::size_t>(done);
  }
  return true;
}
