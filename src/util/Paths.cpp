// SPDX-License-Identifier: MIT
#include "util/Paths.h"

#include <algorithm>

#include "platform/Machine.h"
#include "util/Debug.h"
#include "util/GlobalsKv.h"
#include "util/Strings.h"

namespace ViewConst {

namespace {

constexpr std::string_view kContents = "/Contents";

/// Where the last extension begins, or npos.
std::size_t ExtensionStart(const std::string& path) {
  const std::size_t at = path.find_last_of("./");
  return at != std::string::npos && path[at] == '.' ? at : std::string::npos;
}

std::string WithoutLastCharacter(std::string text) {
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace

std::string GetPathSeparator() {
  return "/";
}

std::string MyAbsolutePath(const std::optional<FolderItem>& item) {
  if (!item) return "";
  std::string path = item->NativePath();
  if (!path.ends_with('/') && item->Directory()) path += '/';
  return path;
}

std::string ExtractFilePath(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1);
}

std::string MyExtractFilePath(const std::string& path) {
  const std::string folder = WithoutLastCharacter(ExtractFilePath(path));
  if (!NonCaseMatch(ExtractFileExt(folder), ".app")) return folder;
  return WithoutLastCharacter(ExtractFilePath(folder));
}

std::string ExtractFileName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::string ExtractFileExt(const std::string& path) {
  const std::size_t start = ExtensionStart(path);
  return start == std::string::npos ? "" : path.substr(start);
}

std::string ChangeFileExt(const std::string& path, const std::string& ext) {
  return path.substr(0, ExtensionStart(path)) + ext;
}

void DropTrailingPathSeparator(std::string& path) {
  if (path.ends_with('/')) path.pop_back();
}

std::string DirectoryPathExtract(const std::string& path, int n) {
  DebugConsole("DPE0");
  std::size_t at = std::string::npos;
  for (int found = 0; found < n; ++found) {
    DebugConsole("DPE1");
    at = path.find('/', at + 1);
    if (at == std::string::npos) {
      DebugConsole("DPE2");
      return found == n - 1 ? path : "";
    }
  }
  DebugConsole("DPE3");
  return path.substr(0, at);
}

FolderItem GetApplicationFolder() {
  return FolderItem(Machine::Current().SystemParentFolder()).Child("Applications");
}

std::string BundleOf(const std::string& executable) {
  return executable.substr(0, FindText(executable, kContents, 0));
}

std::string ContentsFolder(const std::string& executable) {
  const std::size_t at = FindText(executable, kContents, 0);
  return at == std::string::npos ? executable : executable.substr(0, at + kContents.size());
}

FolderItem ResourceFolder() {
  return FolderItem(ContentsFolder(Machine::Current().ExecutableFile())).Child("Resources");
}

std::string RunningBundle() {
  const std::string executable = Machine::Current().ExecutableFile();
  std::size_t last = std::string::npos;
  for (std::size_t at = FindText(executable, kContents, 0); at != std::string::npos;
       at = FindText(executable, kContents, at + 1))
    last = at;
  return executable.substr(0, last);
}

std::function<void()> gTranslocated;

std::string GetApplicationPath() {
  std::string path = ExtractFilePath(RunningBundle());
  const bool moved = FindText(path, "AppTranslocation", 0) != std::string::npos;
  if (moved && !GlobalsKv::gIgnoreTranslocationError && gTranslocated) gTranslocated();
  return path;
}

std::string CocoaToCarbonPath(const std::string& path) {
  return CocoaToCarbonPath(path, Machine::Current().StartupVolumeName());
}

std::string CocoaToCarbonPath(const std::string& path, const std::string& startupVolume) {
  const std::string kVolumes = "/Volumes/";
  std::string result = path;
  if (FindText(result, kVolumes, 0) == 0) {
    result.erase(0, kVolumes.size());
    const std::size_t slash = result.find('/');
    if (slash != std::string::npos && slash > 0) {
      if (result.substr(0, slash) == startupVolume) result.erase(0, slash);
      std::replace(result.begin(), result.end(), '/', ':');
    }
  }
  if (result.starts_with('/')) {
    std::replace(result.begin(), result.end(), '/', ':');
    result.insert(0, startupVolume);
  }
  return result;
}

}  // namespace ViewConst
