// SPDX-License-Identifier: MIT
// Where an install goes, worked out from names alone.
#pragma once

#include <string>

struct Target {
  std::string folder;   // without closing "/"
  std::string archive;  // the ".zip" that bears its name, beside it
};

/// May a package name its target so? It is the name of something inside the folder that the user picks.
bool IsTargetName(const std::string& name);

/// What the folder of a patch bears behind its installation's name.
inline constexpr const char* kPatchSuffix = "Patch";

/// The software as the package holds it.
struct Payload {
  std::string path;  // of Data2, or of a split set's first piece; empty without a package folder
  bool split = false;
};

/// `parent` is the chosen folder, with or without closing "/".
Target PlanTarget(const std::string& parent, const std::string& name);
