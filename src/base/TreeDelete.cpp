// SPDX-License-Identifier: MIT
// The walk holds one folder open at a time and climbs by "..", checked against the folder it came
// from: a tree may be deeper than descriptors or path lengths allow, and may be moved meanwhile.
#include "base/TreeDelete.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

#include "base/Descriptor.h"
#include "base/FolderNames.h"
#include "base/MountPoint.h"

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr mode_t kOwnerAll = S_IRWXU;

struct Level {
  dev_t device = 0;
  ino_t inode = 0;
  std::string name;                  // in its parent
  std::vector<std::string> folders;  // still to be entered
};

class TreeWalk {
 public:
  explicit TreeWalk(const std::function<void()>& tick) : fTick(tick) {}

  bool Delete(int parent, const std::string& name) {
    if (!IsFolder(parent, name)) return ::unlinkat(parent, name.c_str(), 0) == 0;
    if (!Enter(parent, name)) return false;
    while (!fLevels.empty()) {
      if (fLevels.back().folders.empty()) {
        if (!Leave(parent)) return false;
        continue;
      }
      const std::string next = std::move(fLevels.back().folders.back());
      fLevels.back().folders.pop_back();
      if (!Enter(fFolder.Get(), next)) fComplete = false;
    }
    return fComplete;
  }

 private:
  static bool IsFolder(int parent, const std::string& name) {
    struct stat info {};
    return ::fstatat(parent, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode);
  }

  /// Opens a folder, empties it of everything but folders, and notes those. What is mounted stays.
  bool Enter(int parent, const std::string& name) {
    if (IsMountPoint(parent, name.c_str())) return false;
    Descriptor folder(::openat(parent, name.c_str(), kFolderFlags));
    if (!folder && errno == EACCES) {
      // The owner's own lack of permission; fchmodat doesn't follow a link put in its place.
      if (::fchmodat(parent, name.c_str(), kOwnerAll, AT_SYMLINK_NOFOLLOW) == 0)
        folder = Descriptor(::openat(parent, name.c_str(), kFolderFlags));
    }
    struct stat info {};
    if (!folder || ::fstat(folder.Get(), &info) != 0) return false;
    if ((info.st_mode & kOwnerAll) != kOwnerAll) {
      if (::fchmod(folder.Get(), info.st_mode | kOwnerAll) != 0) fComplete = false;
    }
    fLevels.push_back({info.st_dev, info.st_ino, name, {}});
    fFolder = std::move(folder);
    Empty();
    return true;
  }

  void Empty() {
    std::optional<std::vector<std::string>> names = NamesIn(fFolder.Get());
    if (!names) {
      fComplete = false;
      return;
    }
    for (std::string& name : *names) {
      if (::unlinkat(fFolder.Get(), name.c_str(), 0) == 0 || errno == ENOENT) {
        Count();
      } else if (IsFolder(fFolder.Get(), name)) {
        fLevels.back().folders.push_back(std::move(name));
      } else {
        fComplete = false;
      }
    }
  }

  /// Goes back to the parent and removes the folder just left. False when the way back is lost.
  bool Leave(int root) {
    const std::string name = fLevels.back().name;
    fLevels.pop_back();
    if (fLevels.empty()) {
      if (::unlinkat(root, name.c_str(), AT_REMOVEDIR) != 0) fComplete = false;
      return true;
    }
    Descriptor parent(::openat(fFolder.Get(), "..", kFolderFlags));
    struct stat info {};
    if (!parent || ::fstat(parent.Get(), &info) != 0) return false;
    if (info.st_dev != fLevels.back().device || info.st_ino != fLevels.back().inode) return false;
    fFolder = std::move(parent);
    if (::unlinkat(fFolder.Get(), name.c_str(), AT_REMOVEDIR) != 0) fComplete = false;
    Count();
    return true;
  }

  void Count() {
    if (++fCount % 64 == 0) fTick();
  }

  const std::function<void()>& fTick;
  std::vector<Level> fLevels;
  Descriptor fFolder;
  unsigned fCount = 0;
  bool fComplete = true;
};

}  // namespace

bool DeleteTreeAt(const std::string& path, const std::function<void()>& tick) {
  const std::size_t slash = path.find_last_of('/');
  if (slash == std::string::npos || slash + 1 == path.size()) return false;
  const std::string folder = slash == 0 ? "/" : path.substr(0, slash);
  const Descriptor parent(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const std::string name = path.substr(slash + 1);
  if (!parent || name == "." || name == "..") return false;
  return TreeWalk(tick).Delete(parent.Get(), name);
}

bool DeleteTreeIn(int parent, const std::string& name) {
  const std::function<void()> nothing = [] {};
  return TreeWalk(nothing).Delete(parent, name);
}
