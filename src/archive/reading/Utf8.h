// SPDX-License-Identifier: MIT
// UTF-8 as far as names in an archive need it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace archive {

/// Bytes of the character that `text` begins with; 0 where no valid character stands (overlong forms,
/// surrogates and values beyond U+10FFFF are none). `text` is not empty.
std::size_t Utf8Length(std::string_view text);

bool IsUtf8(std::string_view text);
bool IsAscii(std::string_view text);

/// Whether `text`, which begins with a valid character, begins with a control character (C0, DEL, C1).
bool IsControl(std::string_view text);
/// Whether one stands anywhere in it.
bool HoldsControl(std::string_view text);

/// The text that the bytes mean in the code page 437, in UTF-8.
std::string FromCodePage437(std::string_view bytes);

}  // namespace archive
