// SPDX-License-Identifier: MIT
// Modes are set by the system call itself: no shell sees a file name, and a link's target keeps its own.
#include "util/Rights.h"

#include "util/GlobalsKv.h"

namespace ViewConst {

namespace {

constexpr unsigned kFolderForAll = 0777;
constexpr unsigned kFileForAll = 0666;

void Give(const std::optional<FolderItem>& item, unsigned folderMode, unsigned fileMode) {
  if (!item || item->Alias()) return;
  // As with every access change, a refusal is no news: what needs the access will tell.
  static_cast<void>(item->SetPermissions(item->Permissions() | (item->Directory() ? folderMode : fileMode)));
}

}  // namespace

void AllUsersFullAccess(const std::string& path) {
  Give(GlobalsKv::MyGetFolderItem(path), kFolderForAll, kFileForAll);
}

void AllUsersFullAccessOnMac(const std::optional<FolderItem>& item) {
  Give(item, kFolderForAll, kFolderForAll);
}

void SetInvisible(const std::string& path) {
  const std::optional<FolderItem> item = GlobalsKv::MyGetFolderItem(path);
  if (item && item->Exists()) item->SetVisible(false);
}

}  // namespace ViewConst
