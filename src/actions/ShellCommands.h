// SPDX-License-Identifier: MIT
// How a script file is taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The lines between pairs of carriage return and line feed where there is one, else between line feeds
/// where there is one, else between carriage returns. Empty lines count.
std::vector<std::string> ScriptLines(std::string_view text);
