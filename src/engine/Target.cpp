// SPDX-License-Identifier: MIT
#include "engine/Target.h"

#include <algorithm>

#include "util/Strings.h"

namespace {

bool IsElement(std::string_view element) {
  const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 32 || byte == 127; };
  return !element.empty() && element != "." && element != ".." &&
         std::none_of(element.begin(), element.end(), isControl);
}

}  // namespace

bool IsTargetName(const std::string& name) {
  const std::vector<std::string_view> elements = ViewConst::SplitFields(name, "/");
  return std::all_of(elements.begin(), elements.end(), IsElement);
}

Target PlanTarget(const std::string& parent, const std::string& name) {
  const std::string folder = parent.ends_with('/') ? parent + name : parent + "/" + name;
  return {folder, folder + ".zip"};
}

bool LiesIn(const std::string& path, const std::string& folder) {
  return folder == "/" || (path + "/").starts_with(folder + "/");
}
