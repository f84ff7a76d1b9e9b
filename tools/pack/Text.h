// SPDX-License-Identifier: MIT
// Text as the records store it: UTF-8 taken apart, hexadecimal UTF-16.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pack {

/// The characters of a UTF-8 text; nothing for bytes that are no UTF-8 (overlong forms and surrogates
/// included).
std::optional<std::u32string> DecodeUtf8(std::string_view utf8);

/// UTF-16LE as upper-case hexadecimal digits, four a unit: "A" is "4100". `utf8` must be valid.
std::string ToHexUtf16(std::string_view utf8);

/// CR LF and CR become LF.
std::string WithLineFeeds(std::string_view text);

/// Whether `needle` occurs, ASCII letters in any case.
bool ContainsIgnoringCase(std::string_view text, std::string_view needle);

/// ASCII letters made small, all else untouched.
std::string LowerAscii(std::string_view text);

}  // namespace pack
