// SPDX-License-Identifier: MIT
// Making, locking and removing staging folders.
#include "platform/archive/Staging.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "platform/archive/Plan.h"
#include "platform/posix/TreeDelete.h"

namespace archive {
namespace {

constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// A staging folder that a run of this user made and that no run uses. The lock stays as long as the
/// descriptor.
Descriptor LockIfLeft(int folder, const char* name) {
  Descriptor left(openat(folder, name, kOpenFolder));
  struct stat facts;
  if (!left || fstat(left.Get(), &facts) != 0 || facts.st_uid != geteuid() ||
      (facts.st_mode & 07777 & ~S_ISGID) != S_IRWXU || flock(left.Get(), LOCK_EX | LOCK_NB) != 0)
    return Descriptor();
  return left;
}

/// False only if somebody else holds the lock. A file system without locks has no leftovers removed either.
bool Lock(int folder) {
  return flock(folder, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

void RemoveLeftovers(int folder) {
  Descriptor listed(openat(folder, ".", kOpenFolder));
  DIR* items = listed ? fdopendir(listed.Get()) : nullptr;
  if (items == nullptr) return;
  listed.Release();
  std::vector<std::string> names;
  while (const dirent* item = readdir(items))
    if (IsStagingName(item->d_name)) names.emplace_back(item->d_name);
  closedir(items);
  for (const std::string& name : names) {
    const Descriptor left = LockIfLeft(folder, name.c_str());
    // What can't be removed is only in the way of whoever looks for hidden folders.
    if (left) static_cast<void>(DeleteTreeIn(folder, name));
  }
}

Result<Staging::Reserve> Staging::KeepBack(int folder) {
  Reserve reserve;
  for (Descriptor& spare : reserve) {
    spare = Descriptor(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (!spare) return FailedCall("prepare a folder to expand in");
  }
  return reserve;
}

Result<Staging> Staging::Make(int folder) {
  Result<Reserve> reserve = KeepBack(folder);
  if (!reserve.Ok()) return reserve.Failure();
  constexpr int kTries = 16;
  for (int i = 0; i < kTries; ++i) {
    std::uint64_t random = 0;
    if (getrandom(&random, sizeof random, 0) != sizeof random) continue;
    char name[64];
    std::snprintf(name, sizeof name, ".ditto-%ld-%016llx", static_cast<long>(getpid()),
                  static_cast<unsigned long long>(random));
    if (mkdirat(folder, name, S_IRWXU) != 0) {
      if (errno == EEXIST) continue;
      return FailedCall("make a folder to expand in");
    }
    // Between the two calls another run may have taken the folder for a leftover: then the lock is held by
    // that run, or the folder is gone by now.
    Descriptor locked(openat(folder, name, kOpenFolder));
    struct stat facts;
    if (locked && Lock(locked.Get()) && fstat(locked.Get(), &facts) == 0 && facts.st_nlink != 0)
      return Staging(folder, name, std::move(locked), std::move(*reserve));
    const int reason = errno;
    static_cast<void>(unlinkat(folder, name, AT_REMOVEDIR));
    errno = reason;
    if (errno != EWOULDBLOCK && errno != ENOENT) break;
  }
  return FailedCall("prepare a folder to expand in");
}

Staging::Staging(int folder, std::string name, Descriptor locked, Reserve reserve)
    : fFolder(folder), fName(std::move(name)), fLocked(std::move(locked)), fReserve(std::move(reserve)) {}

Staging::~Staging() {
  fReserve = {};
  if (fLocked) static_cast<void>(DeleteTreeIn(fFolder, fName));  // a later run tries again
}

}  // namespace archive
