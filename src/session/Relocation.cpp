// SPDX-License-Identifier: MIT
#include "session/Relocation.h"

#include <algorithm>

#include "platform/Machine.h"
#include "util/Paths.h"
#include "util/Strings.h"

namespace {

constexpr std::size_t kDigits = 4;

bool IsCopyName(std::string_view name) {
  return name.size() == kDigits &&
         std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

RunsFrom ReadLocation(const std::string& applicationPath, const std::string& temporaryPath) {
  if (ViewConst::Pos(temporaryPath, applicationPath) == 0) return RunsFrom::Anywhere;
  std::string folder = applicationPath;
  ViewConst::DropTrailingPathSeparator(folder);
  const bool own = ViewConst::ExtractFilePath(folder) == temporaryPath &&
                   IsCopyName(ViewConst::ExtractFileName(folder)) &&
                   ViewConst::Pos("AppTranslocation", applicationPath) == 0;
  return own ? RunsFrom::OwnCopy : RunsFrom::TemporaryFolder;
}

std::string TemporaryPath() {
  const std::string folder = Machine::Current().TemporaryFolder();
  return folder.empty() ? "" : FolderItem(folder).ResolvedPath() + "/";
}
