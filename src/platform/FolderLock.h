// SPDX-License-Identifier: MIT
// A folder that one run works in, and no other removes.
#pragma once

#include <memory>
#include <optional>

#include "platform/FolderItem.h"

/// Held as long as the object or its process lives: flock(2) of the folder itself.
class FolderLock {
 public:
  /// None while somebody else holds it, or where the folder can't be opened.
  static std::optional<FolderLock> Take(const FolderItem& folder);
  /// Held together with others; none only while somebody holds it alone. Also of a folder that a link leads
  /// to.
  static std::optional<FolderLock> Share(const FolderItem& folder);
  /// A shared lock becomes one for this run alone. False, with no lock left, while others share it. Where the
  /// file system has no locks nobody can be known to.
  bool MakeExclusive();
  FolderLock(FolderLock&&) noexcept;
  FolderLock& operator=(FolderLock&&) noexcept;
  ~FolderLock();

 private:
  struct Held;
  explicit FolderLock(std::unique_ptr<Held> held);
  std::unique_ptr<Held> fHeld;
};
