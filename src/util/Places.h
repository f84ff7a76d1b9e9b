// SPDX-License-Identifier: MIT
// Names of what lies in a folder.
#pragma once

#include <string>

namespace ViewConst {

/// Is it the name of something inside a folder, also of something deeper down? Not empty, not absolute,
/// without an empty, "." or ".." element, and without control characters.
bool IsInnerName(const std::string& name);

}  // namespace ViewConst
