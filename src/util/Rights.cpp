// SPDX-License-Identifier: MIT
// Modes are set by the system call itself: no shell sees a file name, and a link's target keeps its own.
#include "util/Rights.h"

#include "util/GlobalsKv.h"

namespace ViewConst {

namespace {

constexpr unsigned kFolderForAll = 0777;
constexpr unsigned kFileForAll = 0666;
constexpr unsigned kRunsAsItsOwner = 06000;  // set-user-ID and set-group-ID

}  // namespace

void AllUsersFullAccess(const std::string& path) {
  AllUsersFullAccessOnMac(GlobalsKv::MyGetFolderItem(path));
}

void AllUsersFullAccessOnMac(const std::optional<FolderItem>& item) {
  if (!item || item->Alias()) return;
  const unsigned mode = item->Permissions();
  // Whoever could write to such a program would be its owner.
  if (!item->Directory() && (mode & kRunsAsItsOwner) != 0) return;
  // As with every access change, a refusal is no news: what needs the access will tell.
  static_cast<void>(item->SetPermissions(mode | (item->Directory() ? kFolderForAll : kFileForAll)));
}

void SetInvisible(const std::string& path) {
  const std::optional<FolderItem> item = GlobalsKv::MyGetFolderItem(path);
  if (item && item->Exists()) item->SetVisible(false);
}

}  // namespace ViewConst
