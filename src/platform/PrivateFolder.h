// SPDX-License-Identifier: MIT
// Where something is made before it takes its place.
#pragma once

#include <memory>
#include <optional>

#include "platform/FolderItem.h"

/// A hidden folder of this run's own: mode 0700, under a name that can't be guessed, and locked as long as
/// the object lives. It goes with all that it holds when the object or the process goes, also where its
/// parent has been moved.
class PrivateFolder {
 public:
  /// None where `parent` takes no folder; errno says why.
  static std::optional<PrivateFolder> Make(const FolderItem& parent);
  /// Ends what runs of this user have left in `parent` that were killed: their folders go, and an item that
  /// was set aside (MoveFileTo) comes back, unless another stands in its place.
  static void TidyUp(const FolderItem& parent);

  PrivateFolder(PrivateFolder&& other) noexcept;
  PrivateFolder& operator=(PrivateFolder&&) = delete;
  ~PrivateFolder();
  const FolderItem& Item() const { return fItem; }
  /// Does Item() still lead to it?
  bool InPlace() const;

 private:
  struct Held;
  PrivateFolder(const FolderItem& item, std::unique_ptr<Held> held);
  FolderItem fItem;
  std::unique_ptr<Held> fHeld;
};
