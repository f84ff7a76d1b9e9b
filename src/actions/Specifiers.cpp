// SPDX-License-Identifier: MIT
#include "actions/Specifiers.h"

#include "util/Strings.h"

std::optional<ResolvedSpecifier> ResolveSpecifier(const std::string& name, const SpecifierFolders& folders) {
  const struct {
    std::string_view prefix;
    std::string folder;
  } rows[] = {{"UserAccount/", folders.home + "/"},
              {"InstallFolder/", folders.target + "/"},
              {"FixedPath/", ""},
              {"SetupFolder/", folders.setup}};
  std::optional<ResolvedSpecifier> resolved;
  std::string path = name;
  for (const auto& row : rows) {
    if (ViewConst::Pos(row.prefix, path) != 1) continue;
    const std::string rest = path.substr(row.prefix.size());
    path = row.folder + rest;
    resolved = ResolvedSpecifier{path, folders.setup + rest};
  }
  return resolved;
}
