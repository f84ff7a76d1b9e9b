// SPDX-License-Identifier: MIT
#include "util/Archives.h"

#include "platform/Shell.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"

namespace ViewConst {

bool ZipFileToFolder(const std::string& zipPath, const std::string& folderPath, bool replace) {
  const std::optional<FolderItem> zip = GlobalsKv::MyGetFolderItem(zipPath);
  const std::optional<FolderItem> folder = GlobalsKv::MyGetFolderItem(folderPath);
  if (!zip || !folder) return false;
  if (replace && DirectoryExists(folderPath)) DeleteFolderOrApp(folderPath);
  Shell shell;
  shell.Execute("ditto -xk " + zip->ShellPath() + " " + folder->ShellPath());
  return shell.ErrorCode() == 0;
}

}  // namespace ViewConst
