// SPDX-License-Identifier: MIT
#include "engine/Target.h"

#include "util/Places.h"

bool IsTargetName(const std::string& name) {
  return ViewConst::IsInnerName(name);
}

Target PlanTarget(const std::string& parent, const std::string& name) {
  const std::string folder = parent.ends_with('/') ? parent + name : parent + "/" + name;
  return {folder, folder + ".zip"};
}
