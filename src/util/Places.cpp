// SPDX-License-Identifier: MIT
#include "util/Places.h"

#include <algorithm>

#include "util/Strings.h"

namespace ViewConst {

namespace {

bool IsElement(std::string_view element) {
  const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 32 || byte == 127; };
  return !element.empty() && element != "." && element != ".." &&
         std::none_of(element.begin(), element.end(), isControl);
}

}  // namespace

bool IsInnerName(const std::string& name) {
  FieldReader elements(name, "/");
  while (const std::optional<std::string_view> element = elements.Next())
    if (!IsElement(*element)) return false;
  return true;
}

}  // namespace ViewConst
