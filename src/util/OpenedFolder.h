// SPDX-License-Identifier: MIT
// Folders that their owner has closed to himself.
#pragma once

#include "platform/FolderItem.h"

namespace ViewConst {

/// While it lives, its owner may put something into the folder; then the folder has its mode again. No link
/// is followed, and a folder of somebody else's stays as it is.
class OpenedFolder {
 public:
  explicit OpenedFolder(const FolderItem& folder) : fFolder(folder), fMode(folder.Permissions()) {
    fChanged = folder.Directory() && !folder.IsWriteable() && folder.SetPermissions(fMode | 0700U);
  }
  ~OpenedFolder() {
    if (fChanged) static_cast<void>(fFolder.SetPermissions(fMode));  // it could be set a moment ago
  }
  OpenedFolder(const OpenedFolder&) = delete;
  OpenedFolder& operator=(const OpenedFolder&) = delete;

 private:
  FolderItem fFolder;
  unsigned fMode;
  bool fChanged;
};

}  // namespace ViewConst
