// SPDX-License-Identifier: MIT
// What programs say to the installer by the text of the clipboard, and how a script file is taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct ProgramAnswer {
  enum class Kind { Wait, Abort, Done, Other };
  Kind kind = Kind::Other;
  std::string message{};  // for the user, behind the prefix; may be empty
};

/// Case doesn't count.
ProgramAnswer ReadAnswer(const std::string& clipboard);

/// The lines between pairs of carriage return and line feed where there is one, else between line feeds
/// where there is one, else between carriage returns. Empty lines count.
std::vector<std::string> ScriptLines(std::string_view text);
