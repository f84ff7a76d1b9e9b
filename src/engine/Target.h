// SPDX-License-Identifier: MIT
// Where an install goes, worked out from names alone.
#pragma once

#include <string>

struct Target {
  std::string folder;   // without closing "/"
  std::string archive;  // the ".zip" that stands beside it while it is expanded
};

/// Is it the name of something inside the chosen folder? Not empty, not absolute, without an empty,
/// "." or ".." element, and without control characters.
bool IsTargetName(const std::string& name);

/// `parent` is the chosen folder, with or without closing "/".
Target PlanTarget(const std::string& parent, const std::string& name);

/// Does `path` lie in `folder`, or is it the folder itself? Both resolved, without closing "/".
bool LiesIn(const std::string& path, const std::string& folder);
