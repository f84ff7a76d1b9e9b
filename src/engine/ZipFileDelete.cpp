// SPDX-License-Identifier: MIT
// The end of an archive that somebody may still have open.
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Clock.h"
#include "util/Files.h"
#include "util/Rights.h"

void TessarineStubWindow::ZipFileDelete(const std::string& path, const std::optional<FolderItem>& file) {
  if (file) file->Launch(true);
  const std::int64_t end = Machine::Current().Ticks() + std::int64_t{ViewConst::kVanishLimit} * 60;
  const auto stays = [&path] { return ViewConst::FileExists(path) && !ViewConst::DirectoryExists(path); };
  while (stays() && Machine::Current().Ticks() < end && !Machine::Current().Ending()) {
    ViewConst::AllUsersFullAccess(path);
    ViewConst::DeleteFile(path);
    if (stays()) ViewConst::Sleep(1);
  }
}
