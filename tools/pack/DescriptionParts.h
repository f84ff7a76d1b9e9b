// SPDX-License-Identifier: MIT
// Readers of single parts of a description. What is wrong goes to the section's problems.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "pack/Contents.h"
#include "pack/Description.h"
#include "pack/Section.h"

namespace pack {

/// The keys "folder" and "zip" of a section, of which at most one may be there, and how a folder is packed:
/// "compression" and "level".
Source ReadSource(Section& section);

std::vector<Item> ReadItems(Section& section, const std::string& key, bool option);
Program ReadProgram(Section& section, const std::string& key);
/// Programs that come from elsewhere: `payload` is what will be in the target folder, if that is known.
void CheckPrograms(const Description& description, const std::optional<Contents>& payload,
                   Problems& problems);
void ReadCleanup(Section& section, Description& to);

}  // namespace pack
