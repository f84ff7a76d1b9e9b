// SPDX-License-Identifier: MIT
// Readers of single parts of a description. All of them throw Refusal.
#pragma once

#include <string>
#include <vector>

#include "pack/Description.h"
#include "pack/Section.h"

namespace pack {

/// Refuses what leads out of the folder that it counts from, or is no name at all.
void CheckFolderName(const std::string& field, const std::string& name);

/// The keys "folder" and "zip" of a section, of which at most one may be there, and how a folder is packed:
/// "compression" and "level".
Source ReadSource(Section& section);

std::vector<Item> ReadItems(Section& section, const std::string& key, bool option);
std::vector<std::string> ReadActions(Section& section);
Program ReadProgram(Section& section, const std::string& key);
void ReadCleanup(Section& section, Description& to);

}  // namespace pack
