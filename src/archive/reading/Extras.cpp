// SPDX-License-Identifier: MIT
// Walks the extra fields of a header.
#include "archive/reading/Extras.h"

#include "archive/reading/ZipFormat.h"

namespace archive {

std::optional<Extras> ReadExtras(std::string_view area) {
  constexpr std::size_t kHead = 4;
  constexpr char kHasModified = 1;
  Extras extras;
  while (area.size() >= kHead) {
    const std::uint16_t id = Load16(area.data());
    const std::uint16_t length = Load16(area.data() + 2);
    if (area.size() - kHead < length) return std::nullopt;
    const std::string_view field = area.substr(kHead, length);
    area.remove_prefix(kHead + length);
    if (id == extra::kZip64) {
      if (extras.zip64) return std::nullopt;
      extras.zip64 = field;
    } else if (id == extra::kUnicodePath) {
      if (extras.unicodePath) return std::nullopt;
      extras.unicodePath = field;
    } else if (id == extra::kTimes && field.size() >= 5 && (field[0] & kHasModified)) {
      extras.modified = Load<std::int32_t>(field.data() + 1);
    }
  }
  return extras;
}

bool Zip64Values::Take(std::uint64_t& value) {
  if (value != kIn64Of32) return true;
  if (fLeft.size() < sizeof value) return false;
  value = Load64(fLeft.data());
  fLeft.remove_prefix(sizeof value);
  return true;
}

}  // namespace archive
