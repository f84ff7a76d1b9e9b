// SPDX-License-Identifier: MIT
#include "platform/posix/TreeLook.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "base/Descriptor.h"
#include "base/FolderNames.h"
#include "base/SystemFiles.h"

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// What a folder lets this user take out of it.
struct Rights {
  bool change = false;
  bool onlyOwn = false;  // sticky, and another user's
};

/// Of an open folder.
Rights RightsIn(int folder) {
  struct stat info {};
  if (::fstat(folder, &info) != 0) return {};
  // The owner can give himself what the mode lacks.
  const bool master = ::geteuid() == 0 || info.st_uid == ::geteuid();
  if (master) return {true, false};
  return {::faccessat(folder, ".", W_OK | X_OK, AT_EACCESS) == 0, (info.st_mode & S_ISVTX) != 0};
}

class TreeLook {
 public:
  explicit TreeLook(const std::function<void()>& tick) : fTick(tick) {}
  TreeFacts facts;

  void LookAt(int parent, const Rights& rights, const std::string& name, bool outermost) {
    if (++fCount % 256 == 0) fTick();
    ItemFacts item;
    if (!LookAtItem(parent, name.c_str(), item)) return;
    if (item.frozen || (rights.onlyOwn && item.owner != ::geteuid())) facts.deletable = false;
    if (item.mounted) {
      facts.deletable = false;
      return;
    }
    // A file that bears another name stays on the disk.
    if (S_ISDIR(item.mode) || item.names == 1) {
      facts.bytes += item.bytes;
      ++facts.items;
    }
    if (S_ISDIR(item.mode)) LookInto(parent, name, outermost);
  }

 private:
  void LookInto(int parent, const std::string& name, bool outermost) {
    Descriptor folder(::openat(parent, name.c_str(), kFolderFlags));
    if (!folder) {
      // Another user's, or closed to its owner, who will open it.
      struct stat info {};
      const bool own =
          ::fstatat(parent, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && info.st_uid == ::geteuid();
      if (!own) facts.deletable = false;
      return;
    }
    const std::vector<std::string> names = NamesIn(folder.Get()).value_or(std::vector<std::string>());
    const Rights rights = RightsIn(folder.Get());
    if (!rights.change && !(names.empty() && !outermost)) facts.deletable = false;
    for (const std::string& item : names) LookAt(folder.Get(), rights, item, false);
  }

  const std::function<void()>& fTick;
  unsigned fCount = 0;
};

}  // namespace

TreeFacts LookAtTree(const std::string& path, const std::function<void()>& tick) {
  TreeLook look(tick);
  const std::string above = path.substr(0, path.rfind('/') + 1);
  const Descriptor parent(::open(above.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (parent) look.LookAt(parent.Get(), RightsIn(parent.Get()), path.substr(above.size()), true);
  return look.facts;
}
