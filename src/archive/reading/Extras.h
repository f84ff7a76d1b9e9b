// SPDX-License-Identifier: MIT
// The extra fields of a header that expansion needs.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace archive {

struct Extras {
  std::optional<std::string_view> zip64;
  std::optional<std::string_view> unicodePath;
  std::optional<std::int64_t> modified;  // seconds since 1970
};

/// Splits the extra area of a header; nothing where a field runs out of the area or a field that decides
/// about lengths or names stands there twice. Up to three bytes of padding may stand at the end.
std::optional<Extras> ReadExtras(std::string_view area);

/// Takes the long values out of a zip64 field, in the order in which they stand there.
class Zip64Values {
 public:
  explicit Zip64Values(const Extras& extras) : fLeft(extras.zip64.value_or(std::string_view())) {}
  /// Replaces `value` by the next long one if it is all ones; false if there is none left.
  bool Take(std::uint64_t& value);

 private:
  std::string_view fLeft;
};

}  // namespace archive
