// SPDX-License-Identifier: MIT
// Deletes depth first; what lies too deep is first moved up to the top.
#include "platform/archive/RemoveTree.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/archive/Descriptor.h"

namespace archive {
namespace {

constexpr int kDeepest = 12;  // descriptors held at a time; three are enough where there are no more

bool IsFolder(int parent, const dirent& item) {
  if (item.d_type != DT_UNKNOWN) return item.d_type == DT_DIR;
  struct stat facts;
  return fstatat(parent, item.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(facts.st_mode);
}

/// Opens a folder for reading and makes sure that its owner may change it.
Descriptor OpenFolder(int parent, const char* name) {
  const int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  Descriptor folder(openat(parent, name, flags));
  if (!folder && errno == EACCES && fchmodat(parent, name, S_IRWXU, 0) == 0)
    folder = Descriptor(openat(parent, name, flags));
  struct stat facts;
  if (folder && fstat(folder.Number(), &facts) == 0 && (facts.st_mode & S_IRWXU) != S_IRWXU)
    static_cast<void>(fchmod(folder.Number(), S_IRWXU));  // the deletion below fails if this mattered
  return folder;
}

class Remover {
 public:
  explicit Remover(int top) : fTop(top) {}

  bool Empty() {
    // What is moved up while a pass runs may or may not be seen by it; a pass that moves nothing is the last.
    do {
      fMoved = false;
      fComplete = true;
      Contents(Descriptor(dup(fTop)), 0);
    } while (fMoved);
    return fComplete;
  }

 private:
  void Contents(Descriptor folder, int depth) {
    DIR* items = folder ? fdopendir(folder.Number()) : nullptr;
    if (items == nullptr) {
      fComplete = false;
      return;
    }
    const int number = folder.Release();
    rewinddir(items);
    while (const dirent* item = readdir(items)) {
      if (std::strcmp(item->d_name, ".") == 0 || std::strcmp(item->d_name, "..") == 0) continue;
      Item(number, *item, depth);
    }
    closedir(items);
  }

  void Item(int parent, const dirent& item, int depth) {
    bool gone = false;
    if (!IsFolder(parent, item)) {
      gone = unlinkat(parent, item.d_name, 0) == 0;
    } else {
      Descriptor folder = depth < kDeepest ? OpenFolder(parent, item.d_name) : Descriptor();
      const bool tooFew = !folder && depth > 0 && (errno == EMFILE || errno == ENFILE);
      if (depth == kDeepest || tooFew) {
        gone = MoveUp(parent, item.d_name);
        fMoved = fMoved || gone;
        fComplete = fComplete && gone;
        return;
      }
      Contents(std::move(folder), depth + 1);
      gone = unlinkat(parent, item.d_name, AT_REMOVEDIR) == 0 || fMoved;
    }
    fComplete = fComplete && gone;
  }

  bool MoveUp(int parent, const char* name) {
    char above[32];
    std::snprintf(above, sizeof above, "%u", fNames++);
    if (renameat(parent, name, fTop, above) == 0) return true;
    // A folder that forbids its owner to write can't be moved.
    if (errno == EACCES && fchmodat(parent, name, S_IRWXU, 0) == 0 &&
        renameat(parent, name, fTop, above) == 0)
      return true;
    // A number that an item of the tree bears already is no harm: the next pass takes the next one.
    return errno == EEXIST || errno == ENOTEMPTY || errno == ENOTDIR;
  }

  int fTop;
  unsigned fNames = 0;
  bool fMoved = false;
  bool fComplete = true;
};

}  // namespace

bool RemoveTree(int parent, const char* name) {
  const Descriptor top = OpenFolder(parent, name);
  if (!top) return errno == ENOENT;
  const bool emptied = Remover(top.Number()).Empty();
  return unlinkat(parent, name, AT_REMOVEDIR) == 0 && emptied;
}

}  // namespace archive
