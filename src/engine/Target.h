// SPDX-License-Identifier: MIT
// Where an install goes, worked out from names alone.
#pragma once

#include <string>

struct Target {
  std::string folder;   // without closing "/"
  std::string archive;  // the ".zip" that bears its name, beside it
};

/// The software as the package holds it.
struct Payload {
  std::string path;  // of Data2, or of a split set's first piece; empty without a package folder
  bool split = false;
};

/// `parent` is the chosen folder, with or without closing "/".
Target PlanTarget(const std::string& parent, const std::string& name);
