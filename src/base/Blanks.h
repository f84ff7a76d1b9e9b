// SPDX-License-Identifier: MIT
// What counts as nothing at the ends of a text.
#pragma once

#include <string>
#include <string_view>

inline constexpr std::string_view kBlanks = " \t\r\n";

/// Without the blanks, tabs and line ends that it begins and ends with.
inline std::string WithoutBlanksAround(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return "";
  return std::string(text.substr(first, text.find_last_not_of(kBlanks) + 1 - first));
}
