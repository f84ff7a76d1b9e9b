// SPDX-License-Identifier: MIT
#include "choices/MergeStaging.h"

#include "platform/Machine.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/OpenedFolder.h"

void MergeStaging(const ItemPlace& place, const std::function<void(const std::string& path)>& failed) {
  const std::optional<FolderItem> staging = GlobalsKv::MyGetFolderItem(place.expansionFolder);
  const std::optional<std::vector<FolderItem>> items = staging ? staging->List() : std::nullopt;
  if (!items) failed(place.mergeFolder);
  if (items) {
    const FolderItem folder(FolderItem(place.mergeFolder).ResolvedPath());
    const ViewConst::OpenedFolder opened(folder);
    for (auto item = items->rbegin(); item != items->rend(); ++item) {
      const std::string path = FolderItem(place.mergeFolder).Child(item->Name()).NativePath();
      if (!ViewConst::RenameFile(item->NativePath(), path)) failed(path);
      Machine::Current().Yield();
    }
  }
  ViewConst::DeleteFolderOrApp(place.expansionFolder);
}
