// SPDX-License-Identifier: MIT
// Where the archive of a choice or of an option goes, worked out from names.
#pragma once

#include <functional>
#include <optional>
#include <string>

/// No archive is expanded over a folder that exists: it goes into a staging folder beside that folder,
/// and its top-level items are moved in.
struct ItemPlace {
  std::string expansionFolder;
  std::string mergeFolder;  // receives what the staging folder holds; empty without staging
  bool Staged() const { return !mergeFolder.empty(); }
  const std::string& FinalFolder() const { return Staged() ? mergeFolder : expansionFolder; }
};

inline constexpr const char* kChoiceSuffix = "_Choice";
inline constexpr const char* kOptionSuffix = "_Option";

/// `targetFolder` is a path without closing "/". The last name of the target folder, in any case, and an
/// empty `itemTarget` mean the target folder itself; anything else counts from there. None for a name
/// that leads elsewhere. `isFolder` says whether a folder exists at a path.
std::optional<ItemPlace> PlanItem(const std::string& targetFolder, const std::string& itemTarget,
                                  const std::string& suffix,
                                  const std::function<bool(const std::string&)>& isFolder);
