// SPDX-License-Identifier: MIT
// Small changes to texts.
#pragma once

#include <string>
#include <string_view>

namespace pack {

/// CR LF and CR become LF.
std::string WithLineFeeds(std::string_view text);

/// ASCII letters made small, all else untouched.
std::string LowerAscii(std::string_view text);

}  // namespace pack
