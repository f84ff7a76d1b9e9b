// SPDX-License-Identifier: MIT
// What programs say to the installer by the text of the clipboard.
#pragma once

#include <string>

struct ProgramAnswer {
  enum class Kind { Wait, Abort, Done, Other };
  Kind kind = Kind::Other;
  std::string message{};  // for the user, behind the prefix; may be empty
};

/// Case doesn't count.
ProgramAnswer ReadAnswer(const std::string& clipboard);
