// SPDX-License-Identifier: MIT
#include "choices/MergeStaging.h"

#include "platform/Machine.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"

namespace {

/// While it lives, its owner may put something into the folder.
class Opened {
 public:
  explicit Opened(const FolderItem& folder) : fFolder(folder), fMode(folder.Permissions()) {
    fChanged = !folder.IsWriteable() && folder.SetPermissions(fMode | 0700U);
  }
  ~Opened() {
    if (fChanged) static_cast<void>(fFolder.SetPermissions(fMode));  // it could be set a moment ago
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

 private:
  FolderItem fFolder;
  unsigned fMode;
  bool fChanged;
};

}  // namespace

void MergeStaging(const ItemPlace& place, const std::function<void(const std::string& path)>& failed) {
  const std::optional<FolderItem> staging = GlobalsKv::MyGetFolderItem(place.expansionFolder);
  if (staging) {
    const FolderItem folder(place.mergeFolder);
    const Opened opened(folder);
    const std::vector<FolderItem> items = staging->Children();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      const std::string path = folder.Child(item->Name()).NativePath();
      if (!ViewConst::RenameFile(item->NativePath(), path)) failed(path);
      Machine::Current().Yield();
    }
  }
  ViewConst::DeleteFolderOrApp(place.expansionFolder);
}
