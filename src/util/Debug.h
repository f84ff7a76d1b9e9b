// SPDX-License-Identifier: MIT
// A plain trace, off in a shipped installer.
#pragma once

#include <string>

namespace ViewConst {

extern bool gDebugConsole;
/// The last trace text, whether the log is on or not.
extern std::string gDebugStr;

/// Appends `text` as one line to "lumarert.log" on the user's desktop when the trace is on.
void DebugConsole(const std::string& text);

}  // namespace ViewConst
