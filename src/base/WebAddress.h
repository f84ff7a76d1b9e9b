// SPDX-License-Identifier: MIT
// Which addresses are handed to the desktop.
#pragma once

#include <string>
#include <string_view>

/// The address that `text` is, as it's written there, without the blanks around it; empty where it isn't one
/// for a browser or a mail program: "http://", "https://" or "mailto:", in any case, and no control character
/// in it.
std::string WebAddressOf(std::string_view text);
