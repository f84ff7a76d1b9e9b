// SPDX-License-Identifier: MIT
// Where something is made before it takes its place.
#pragma once

#include <memory>
#include <optional>

#include "platform/FolderItem.h"

/// A hidden folder of this run's own: mode 0700, under a name that can't be guessed, and locked as long as
/// the object lives. It goes with all that it holds when the object goes, also where its parent has been
/// moved.
class PrivateFolder {
 public:
  /// None where `parent` takes no folder; errno says why.
  static std::optional<PrivateFolder> Make(const FolderItem& parent);
  /// Removes those of this user that no run uses any more: left by one that was killed.
  static void RemoveLeft(const FolderItem& parent);

  PrivateFolder(PrivateFolder&& other) noexcept;
  PrivateFolder& operator=(PrivateFolder&&) = delete;
  ~PrivateFolder();
  const FolderItem& Item() const { return fItem; }

 private:
  struct Held;
  PrivateFolder(const FolderItem& item, std::unique_ptr<Held> held);
  FolderItem fItem;
  std::unique_ptr<Held> fHeld;
};
