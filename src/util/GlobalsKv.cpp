// SPDX-License-Identifier: MIT
#include "util/GlobalsKv.h"

namespace GlobalsKv {

std::string gLineBreak;
std::optional<Random> gRandom;
bool gIgnoreTranslocationError = false;
int gConflictType = 0;
std::string gErrorString;

void KvAppInit() {
  gLineBreak = "\n";
  gRandom.emplace();
}

std::string MyGetString(int number) {
  const auto message = [](const char* headline, const char* sentence) {
    return headline + gLineBreak + gLineBreak + sentence;
  };
  switch (number) {
    case -1:
      return "UNKNOWN ERROR. ";
    case 34:
      return message("VOLUME NOT FOUND.", "This volume does not exist: ");
    case 36:
      return message("FILE ALREADY EXISTS.", "A file already exists at this path: ");
    case 39:
      return message("INSUFFICIENT RAM.", "Unable to process picture due to RAM shortage.");
    default:
      return "";
  }
}

std::optional<FolderItem> MyGetFolderItem(const std::string& path) {
  if (!path.starts_with('/')) return std::nullopt;
  return FolderItem(path);
}

}  // namespace GlobalsKv
