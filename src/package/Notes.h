// SPDX-License-Identifier: MIT
// Long texts as a record stores them: "|" for line ends, or behind "$HTML$" hexadecimal UTF-16.
#pragma once

#include <string>
#include <string_view>

std::string DecodeNote(std::string_view field);

/// The field that DecodeNote reads `note` from. Its lines end in LF, and it is UTF-8 without a NUL. Plain
/// text in ASCII keeps its words; pages and anything that would not come back take the marked form.
std::string EncodeNote(std::string_view note);
