// SPDX-License-Identifier: MIT
// What lies inside what, by names alone.
#pragma once

#include <string>

namespace ViewConst {

/// Is it the name of something inside a folder, also of something deeper down? Not empty, not absolute,
/// without an empty, "." or ".." element, and without control characters.
bool IsInnerName(const std::string& name);

/// Does `path` lie in `folder`, or is it the folder itself? Both resolved, without closing "/".
bool LiesIn(const std::string& path, const std::string& folder);

}  // namespace ViewConst
