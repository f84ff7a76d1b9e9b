// SPDX-License-Identifier: MIT
#include "platform/PrivateFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/Descriptor.h"
#include "platform/posix/SiblingName.h"
#include "platform/posix/TreeDelete.h"

namespace {

constexpr const char* kPrefix = ".tessarine-install-";
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Of a folder of this user's alone that nobody holds; the lock stays as long as the descriptor.
Descriptor LockIfLeft(int parent, const std::string& name) {
  Descriptor folder(::openat(parent, name.c_str(), kFolderFlags));
  struct stat info {};
  if (!folder || ::fstat(folder.Get(), &info) != 0 || info.st_uid != ::geteuid() ||
      (info.st_mode & (S_IRWXG | S_IRWXO)) != 0 || ::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0)
    return Descriptor();
  return folder;
}

}  // namespace

struct PrivateFolder::Held {
  Descriptor parent;
  Descriptor locked;
  std::string name;
};

PrivateFolder::PrivateFolder(const FolderItem& item, std::unique_ptr<Held> held)
    : fItem(item), fHeld(std::move(held)) {}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept = default;

PrivateFolder::~PrivateFolder() {
  // What can't be deleted is hidden, and the next run tries again.
  if (fHeld) static_cast<void>(DeleteTreeIn(fHeld->parent.Get(), fHeld->name));
}

std::optional<PrivateFolder> PrivateFolder::Make(const FolderItem& parent) {
  auto held = std::make_unique<Held>();
  held->parent = Descriptor(::open(parent.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!held->parent) return std::nullopt;
  held->name = kPrefix + RandomName();
  if (::mkdirat(held->parent.Get(), held->name.c_str(), S_IRWXU) != 0) return std::nullopt;
  held->locked = Descriptor(::openat(held->parent.Get(), held->name.c_str(), kFolderFlags));
  // Where the file system has no locks, no run of ours removes what another one has left, either.
  static_cast<void>(::flock(held->locked.Get(), LOCK_EX | LOCK_NB));
  const FolderItem item = parent.Child(held->name);
  return PrivateFolder(item, std::move(held));
}

void PrivateFolder::RemoveLeft(const FolderItem& parent) {
  const Descriptor folder(::open(parent.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return;
  for (const FolderItem& item : parent.Children()) {
    const std::string name = item.Name();
    if (!name.starts_with(kPrefix)) continue;
    const Descriptor left = LockIfLeft(folder.Get(), name);
    // Only in the way of whoever looks for hidden folders.
    if (left) static_cast<void>(DeleteTreeIn(folder.Get(), name));
  }
}
