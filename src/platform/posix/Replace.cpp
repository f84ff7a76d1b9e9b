// SPDX-License-Identifier: MIT
#include "platform/posix/Replace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/SystemFiles.h"
#include "base/TreeDelete.h"
#include "platform/posix/Aside.h"
#include "platform/posix/TreeLook.h"

namespace {

/// A folder can change its parent only while its owner may write to it. Its mode comes back at the end.
class Unlocked {
 public:
  explicit Unlocked(std::string path) : fPath(std::move(path)) {
    struct stat info {};
    if (::lstat(fPath.c_str(), &info) != 0 || !S_ISDIR(info.st_mode) || (info.st_mode & S_IWUSR) != 0) return;
    fMode = info.st_mode & 07777U;
    fChanged = SetMode(fMode | S_IRWXU);
  }
  ~Unlocked() {
    // Where the folder went to another place with its mode, whoever owns it could set it a moment ago.
    if (fChanged) static_cast<void>(SetMode(fMode));
  }
  Unlocked(const Unlocked&) = delete;
  Unlocked& operator=(const Unlocked&) = delete;
  bool Changed() const { return fChanged; }
  void NowAt(const std::string& path) { fPath = path; }
  void IsGone() { fChanged = false; }

 private:
  bool SetMode(mode_t mode) const {
    return ::fchmodat(AT_FDCWD, fPath.c_str(), mode, AT_SYMLINK_NOFOLLOW) == 0;
  }

  std::string fPath;
  mode_t fMode = 0;
  bool fChanged = false;
};

bool Exchange(const std::string& a, const std::string& b) {
  return ExchangeItems(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str());
}

bool IsInTheWay(int error) {
  return error == EISDIR || error == ENOTDIR || error == ENOTEMPTY || error == EEXIST;
}

Replaced Replace(const std::string& source, const std::string& target, const std::function<void()>& tick) {
  if (::rename(source.c_str(), target.c_str()) == 0) return Replaced::Yes;
  if (errno == EXDEV) return Replaced::OtherFileSystem;
  if (!IsInTheWay(errno)) return Replaced::No;
  // A disk that is mounted in it would go along, and what can't be deleted would lie about.
  if (!LookAtTree(target, tick).deletable) return Replaced::No;
  if (Exchange(source, target)) {
    static_cast<void>(DeleteTreeAt(source, tick));
    return Replaced::Yes;
  }
  // A folder of an overlay's lower layer can't be moved at all; the new one stands whole beside it.
  if (errno == EXDEV && DeleteTreeAt(target, tick))
    return ::rename(source.c_str(), target.c_str()) == 0 ? Replaced::Yes : Replaced::No;
  const bool cannot = errno == EINVAL || errno == ENOSYS;
  return cannot && TakeTurns(source, target, tick) ? Replaced::Yes : Replaced::No;
}

}  // namespace

Replaced MoveOver(const std::string& source, const std::string& target, const std::function<void()>& tick) {
  const Replaced result = Replace(source, target, tick);
  if (result != Replaced::No || (errno != EACCES && errno != EPERM)) return result;
  Unlocked moved(source);
  Unlocked replaced(target);
  if (!moved.Changed() && !replaced.Changed()) return result;
  const Replaced again = Replace(source, target, tick);
  if (again == Replaced::Yes) {
    moved.NowAt(target);
    replaced.IsGone();
  }
  return again;
}
