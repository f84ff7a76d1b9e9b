// SPDX-License-Identifier: MIT
#include "platform/posix/Aside.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <string_view>

#include "base/FolderNames.h"
#include "base/LockedFolder.h"
#include "base/TreeDelete.h"

namespace {

constexpr std::string_view kPrefix = ".tessarine-aside-";

bool Exists(int folder, const std::string& name) {
  struct stat info {};
  return ::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0;
}

}  // namespace

bool TakeTurns(const std::string& source, const std::string& target, const std::function<void()>& tick) {
  const std::size_t slash = target.rfind('/');
  const std::string name = target.substr(slash + 1);
  const Descriptor parent(::open(target.substr(0, slash + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!parent) return false;
  const LockedFolder aside = LockedFolder::Make(parent.Get(), kPrefix);
  if (!aside.lock) return false;
  const bool done = ::renameat(parent.Get(), name.c_str(), aside.lock.Get(), name.c_str()) == 0 &&
                    ::rename(source.c_str(), target.c_str()) == 0;
  const int reason = errno;
  // It had its place a moment ago.
  if (!done) static_cast<void>(::renameat(aside.lock.Get(), name.c_str(), parent.Get(), name.c_str()));
  // What stays is hidden, and nothing of it is lost.
  if (done)
    static_cast<void>(DeleteTreeAt(target.substr(0, slash + 1) + aside.name, tick));
  else
    static_cast<void>(::unlinkat(parent.Get(), aside.name.c_str(), AT_REMOVEDIR));
  errno = reason;
  return done;
}

bool IsAside(const std::string& name) {
  return name.starts_with(kPrefix);
}

void TakeBackAside(int parent, const std::string& name) {
  const LockedFolder left = LockedFolder::IfLeft(parent, name);
  if (!left.lock) return;
  bool kept = false;
  for (const std::string& item : NamesIn(left.lock.Get()).value_or(std::vector<std::string>()))
    if (!Exists(parent, item) && ::renameat(left.lock.Get(), item.c_str(), parent, item.c_str()) != 0)
      kept = true;  // the only one there is
  if (!kept) static_cast<void>(DeleteTreeIn(parent, name));
}
