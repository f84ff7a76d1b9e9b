// SPDX-License-Identifier: MIT
#include "platform/PrivateFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <set>
#include <string_view>

#include "base/Descriptor.h"
#include "base/LockedFolder.h"
#include "base/TreeDelete.h"
#include "platform/posix/Aside.h"
#include "platform/posix/HelperExpansion.h"
#include "platform/posix/Process.h"

namespace {

constexpr std::string_view kPrefix = ".tessarine-install-";

}  // namespace

struct PrivateFolder::Held {
  Descriptor parent;
  LockedFolder folder;

  Held(Descriptor in, LockedFolder made);
  // What can't be deleted is hidden, and the next run tries again.
  ~Held();
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

  void Remove() {
    // Without a descriptor to spare, the lock's will do.
    if (!DeleteTreeIn(parent.Get(), folder.name)) folder.lock = Descriptor();
    if (!folder.lock) static_cast<void>(DeleteTreeIn(parent.Get(), folder.name));
  }
  /// A toolkit that loses its display ends the process, and no object goes.
  static void RemoveAll();
  static std::set<Held*> all;
};

std::set<PrivateFolder::Held*> PrivateFolder::Held::all;

PrivateFolder::Held::Held(Descriptor in, LockedFolder made) : parent(std::move(in)), folder(std::move(made)) {
  static const int registered = std::atexit(RemoveAll);
  static_cast<void>(registered);  // without it the next run removes what is left
  all.insert(this);
}

PrivateFolder::Held::~Held() {
  all.erase(this);
  Remove();
}

void PrivateFolder::Held::RemoveAll() {
  EndWaitedFor();
  HelperExpansion::StopAll();
  for (Held* held : all) held->Remove();
}

PrivateFolder::PrivateFolder(const FolderItem& item, std::unique_ptr<Held> held)
    : fItem(item), fHeld(std::move(held)) {}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept = default;

PrivateFolder::~PrivateFolder() = default;

std::optional<PrivateFolder> PrivateFolder::Make(const FolderItem& parent) {
  Descriptor folder(::open(parent.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return std::nullopt;
  LockedFolder made = LockedFolder::Make(folder.Get(), kPrefix);
  if (!made.lock) return std::nullopt;
  const FolderItem item = parent.Child(made.name);
  return PrivateFolder(item, std::make_unique<Held>(std::move(folder), std::move(made)));
}

bool PrivateFolder::InPlace() const {
  struct stat held {};
  struct stat found {};
  return ::fstat(fHeld->folder.lock.Get(), &held) == 0 && ::lstat(fItem.NativePath().c_str(), &found) == 0 &&
         held.st_dev == found.st_dev && held.st_ino == found.st_ino;
}

void PrivateFolder::TidyUp(const FolderItem& parent) {
  const Descriptor folder(::open(parent.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return;
  for (const FolderItem& item : parent.Children()) {
    const std::string name = item.Name();
    if (IsAside(name)) {
      TakeBackAside(folder.Get(), name);
    } else if (name.starts_with(kPrefix)) {
      // Only in the way of whoever looks for hidden folders.
      if (LockedFolder::IfLeft(folder.Get(), name).lock) static_cast<void>(DeleteTreeIn(folder.Get(), name));
    }
  }
}
