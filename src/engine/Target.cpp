// SPDX-License-Identifier: MIT
#include "engine/Target.h"

Target PlanTarget(const std::string& parent, const std::string& name) {
  const std::string folder = parent.ends_with('/') ? parent + name : parent + "/" + name;
  constexpr std::size_t kLongestName = 255;
  const std::string archive = folder.substr(folder.rfind('/') + 1) + ".zip";
  return {folder, folder + ".zip", archive.size() <= kLongestName ? archive : "Payload.zip"};
}
