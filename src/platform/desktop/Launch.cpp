// SPDX-License-Identifier: MIT
#include "platform/desktop/Launch.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/BinaryStream.h"
#include "platform/desktop/PropertyList.h"

namespace {

constexpr std::uint64_t kLongestPropertyList = 1U << 20;

bool IsProgram(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

bool EndsWith(const std::string& name, const char* ending, std::size_t length) {
  return name.size() >= length && ::strcasecmp(name.c_str() + name.size() - length, ending) == 0;
}

}  // namespace

std::string BundleExecutable(const FolderItem& bundle) {
  const FolderItem contents = bundle.Child("Contents");
  const FolderItem programs = contents.Child("MacOS");
  // One that is too long, or can't be read to its end, counts as none.
  const std::string list =
      BinaryStream::Content(contents.Child("Info.plist"), kLongestPropertyList).value_or("");
  const std::string named = ExecutableNameOfPropertyList(list);
  const std::string stem = bundle.Name().substr(0, bundle.Name().rfind('.'));
  for (const std::string& name : {named, stem}) {
    const FolderItem program = programs.Child(name);
    if (!name.empty() && IsProgram(program.NativePath())) return program.NativePath();
  }
  std::string only;
  for (const FolderItem& child : programs.Children()) {
    if (!IsProgram(child.NativePath())) continue;
    if (!only.empty()) return "";
    only = child.NativePath();
  }
  return only;
}

LaunchPlan PlanLaunch(const FolderItem& item) {
  if (!item.Exists()) return {};
  if (item.Directory()) {
    if (!EndsWith(item.Name(), ".app", 4)) return {LaunchKind::kDocument, ""};
    const std::string program = BundleExecutable(item);
    return program.empty() ? LaunchPlan{} : LaunchPlan{LaunchKind::kProgram, program};
  }
  if (EndsWith(item.Name(), ".zip", 4)) return {LaunchKind::kArchive, ""};
  if (IsProgram(item.NativePath())) return {LaunchKind::kProgram, item.NativePath()};
  return {LaunchKind::kDocument, ""};
}
