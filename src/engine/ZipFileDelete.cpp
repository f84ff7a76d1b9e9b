// SPDX-License-Identifier: MIT
// The end of what bears the archive's name.
#include "session/TessarineStubWindow.h"
#include "util/Files.h"

void TessarineStubWindow::ZipFileDelete(const std::string& path, const std::optional<FolderItem>& file) {
  if (file) file->Launch(true);
  // This run has put none there; one that can't go is somebody else's.
  if (!ViewConst::DirectoryExists(path)) ViewConst::DeleteFile(path);
}
