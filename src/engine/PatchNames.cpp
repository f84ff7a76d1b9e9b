// SPDX-License-Identifier: MIT
#include "engine/PatchNames.h"

#include "util/Strings.h"

PatchName ReadPatchName(const std::string& name) {
  constexpr std::string_view kMarker = "*Delete*";
  const std::size_t at = ViewConst::FindText(name, kMarker, 0);
  if (at == std::string::npos) return {name, false};
  return {name.substr(0, at) + name.substr(at + kMarker.size()), true};
}
