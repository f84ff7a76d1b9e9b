// SPDX-License-Identifier: MIT
// Names in a patch folder.
#pragma once

#include <string>

struct PatchName {
  std::string name;      // in the installation
  bool deletes = false;  // the item of that name goes
};

/// Takes the first "*Delete*" out of an item's name, in any case and wherever it stands.
PatchName ReadPatchName(const std::string& name);
