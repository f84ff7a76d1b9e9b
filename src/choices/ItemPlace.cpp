// SPDX-License-Identifier: MIT
#include "choices/ItemPlace.h"

#include "util/Paths.h"
#include "util/Places.h"
#include "util/Strings.h"

std::optional<ItemPlace> PlanItem(const std::string& targetFolder, const std::string& itemTarget,
                                  const std::string& suffix,
                                  const std::function<bool(const std::string&)>& isFolder) {
  if (ViewConst::NonCaseMatch(itemTarget, ViewConst::ExtractFileName(targetFolder)))
    return ItemPlace{targetFolder + suffix, targetFolder};
  std::string name = itemTarget;
  ViewConst::DropTrailingPathSeparator(name);
  if (!itemTarget.empty() && !ViewConst::IsInnerName(name)) return std::nullopt;
  const std::string folder = targetFolder + "/" + itemTarget;
  // Behind a closing "/" the staging folder lies inside the one that it is for.
  if (isFolder(folder)) return ItemPlace{folder + suffix, folder};
  return ItemPlace{folder, ""};
}
