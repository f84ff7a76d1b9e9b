// SPDX-License-Identifier: MIT
#include "archive/planning/Room.h"

#include <sys/statvfs.h>

namespace archive {

Status CheckRoom(int folder, std::uint64_t bytes, std::uint64_t items) {
  struct statvfs facts;
  if (fstatvfs(folder, &facts) != 0) return FailedCall("look at the target's file system");
  const unsigned __int128 free = static_cast<unsigned __int128>(facts.f_bavail) * facts.f_frsize;
  // Some file systems count nothing.
  if (facts.f_blocks != 0 && bytes > free) return Fail("there is not enough room for the archive's content");
  if (facts.f_files != 0 && items > facts.f_favail)
    return Fail("the target's file system can't hold so many files");
  return {};
}

}  // namespace archive
