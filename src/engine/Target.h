// SPDX-License-Identifier: MIT
// Where an install goes, worked out from names alone.
#pragma once

#include <string>

struct Target {
  std::string folder;   // without closing "/"
  std::string archive;  // the ".zip" that stands beside it while it is expanded
};

/// `parent` is the chosen folder, with or without closing "/".
Target PlanTarget(const std::string& parent, const std::string& name);
