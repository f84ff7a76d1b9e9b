// SPDX-License-Identifier: MIT
#include "platform/desktop/Launch.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "platform/BinaryStream.h"

namespace {

bool IsProgram(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

bool EndsWith(const std::string& name, const char* ending, std::size_t length) {
  return name.size() >= length && ::strcasecmp(name.c_str() + name.size() - length, ending) == 0;
}

}  // namespace

std::string ExecutableNameOfPropertyList(const std::string& xml) {
  const std::size_t key = xml.find("<key>CFBundleExecutable</key>");
  const std::size_t begin = key == std::string::npos ? key : xml.find("<string>", key);
  const std::size_t end = begin == std::string::npos ? begin : xml.find("</string>", begin);
  if (end == std::string::npos) return "";
  const std::string name = xml.substr(begin + 8, end - begin - 8);
  return name.find('/') == std::string::npos && name != ".." && name != "." ? name : "";
}

bool IsWebAddress(const std::string& address) {
  const auto begins = [&address](std::string_view scheme) {
    return ::strncasecmp(address.c_str(), scheme.data(), scheme.size()) == 0 &&
           address.size() > scheme.size();
  };
  const bool plain = std::none_of(address.begin(), address.end(), [](char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F';
  });
  return plain && (begins("http://") || begins("https://") || begins("mailto:"));
}

std::string BundleExecutable(const FolderItem& bundle) {
  const FolderItem contents = bundle.Child("Contents");
  const FolderItem programs = contents.Child("MacOS");
  std::string named;
  if (std::optional<BinaryStream> list = BinaryStream::Open(contents.Child("Info.plist")))
    named = ExecutableNameOfPropertyList(list->ReadAll());
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
