// SPDX-License-Identifier: MIT
#include "base/LockedFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/SiblingName.h"

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

}  // namespace

LockedFolder LockedFolder::Make(int parent, std::string_view prefix) {
  constexpr int kTries = 16;
  for (int i = 0; i < kTries; ++i) {
    std::string name = std::string(prefix) + RandomName();
    if (::mkdirat(parent, name.c_str(), S_IRWXU) != 0) return {};
    Descriptor folder(::openat(parent, name.c_str(), kFolderFlags));
    struct stat info {};
    // Between the calls another run may have taken it for a left one: it's that run's, or gone, by now. Where
    // the file system has no locks, no run of ours removes what another one has left.
    const bool taken = folder && ::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (folder && !taken && ::fstat(folder.Get(), &info) == 0 && info.st_nlink > 0)
      return {std::move(name), std::move(folder)};
    const int reason = errno;
    static_cast<void>(::unlinkat(parent, name.c_str(), AT_REMOVEDIR));
    errno = reason;
    if (!folder && reason != ENOENT) return {};
  }
  return {};
}

LockedFolder LockedFolder::IfLeft(int parent, const std::string& name) {
  const std::size_t digits = name.rfind('-') + 1;
  if (name.size() - digits != 16 || name.find_first_not_of("0123456789abcdef", digits) != name.npos)
    return {};
  Descriptor folder(::openat(parent, name.c_str(), kFolderFlags));
  struct stat info {};
  if (!folder || ::fstat(folder.Get(), &info) != 0 || info.st_uid != ::geteuid() ||
      ::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0)
    return {};
  return {name, std::move(folder)};
}
