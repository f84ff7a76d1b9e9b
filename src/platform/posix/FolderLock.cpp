// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

#include "base/Descriptor.h"

struct FolderLock::Held {
  Descriptor folder;
};

FolderLock::FolderLock(std::unique_ptr<Held> held) : fHeld(std::move(held)) {}
FolderLock::FolderLock(FolderLock&&) noexcept = default;
FolderLock& FolderLock::operator=(FolderLock&&) noexcept = default;
FolderLock::~FolderLock() = default;

std::optional<FolderLock> FolderLock::Take(const FolderItem& folder) {
  auto held = std::make_unique<Held>();
  held->folder =
      Descriptor(::open(folder.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!held->folder || ::flock(held->folder.Get(), LOCK_EX | LOCK_NB) != 0) return std::nullopt;
  return FolderLock(std::move(held));
}

std::optional<FolderLock> FolderLock::Share(const FolderItem& folder) {
  auto held = std::make_unique<Held>();
  held->folder = Descriptor(::open(folder.NativePath().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (::flock(held->folder.Get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) return std::nullopt;
  return FolderLock(std::move(held));
}

bool FolderLock::MakeExclusive() {
  return ::flock(fHeld->folder.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}
