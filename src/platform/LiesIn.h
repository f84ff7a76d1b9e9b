// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Does `path` lie in `folder`, or is it the folder itself? By names alone; both resolved, without closing
/// "/".
inline bool LiesIn(const std::string& path, const std::string& folder) {
  return folder == "/" || (path + "/").starts_with(folder + "/");
}
