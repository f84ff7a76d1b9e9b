// SPDX-License-Identifier: MIT
// What a publisher says about an installer, checked and with its texts and pictures loaded.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "choices/ItemList.h"
#include "pack/Scramble.h"
#include "pack/archive/Compression.h"
#include "package/InstallerRecord.h"

namespace pack {

/// Content of an archive: a folder to be packed, or a zip that exists. One of the two at most.
struct Source {
  std::filesystem::path folder;
  std::filesystem::path zip;
  Compression compression;  ///< of a folder
  bool Given() const { return !folder.empty() || !zip.empty(); }
};

/// One row of the choice list or of the option list. Its `source` is the name that the archive gets in
/// Resources, or a web address.
struct Item : ListItem {
  Source archive;  ///< not given for a web address
};

/// A program to run before or after the install.
struct Program {
  std::string name;            ///< in Resources, or a path specifier; empty: none
  std::filesystem::path file;  ///< what to put into Resources under this name, if anything
};

struct Description {
  InstallerRecord record;  ///< what the installer will read
  Source payload;
  Split split;
  std::vector<Item> choices, options;
  Program before, after;
  Source cleanupProgram;
};

/// Reads the JSON file `file`, and looks at all that it names. Paths in it count from its own folder. Throws
/// Mistakes with everything that the installer couldn't carry out, or Refusal for no file at all.
Description ReadDescription(const std::filesystem::path& file);

/// Name of the Payload's one top-level folder: the last name of the target folder, for a patch with "Patch"
/// behind it.
std::string PayloadFolder(const Description& description);

}  // namespace pack
