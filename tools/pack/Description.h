// SPDX-License-Identifier: MIT
// What a publisher says about an installer, checked and with its texts and pictures loaded.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "pack/Notes.h"
#include "pack/Picture.h"
#include "pack/Scramble.h"
#include "pack/archive/Compression.h"

namespace pack {

/// Content of an archive: a folder to be packed, or a zip that exists. One of the two at most.
struct Source {
  std::filesystem::path folder;
  std::filesystem::path zip;
  Compression compression;  ///< of a folder
  bool Given() const { return !folder.empty() || !zip.empty(); }
};

/// One row of the choice list or of the option list.
struct Item {
  std::string name;
  std::string source;  ///< as the record has it: the archive's file name in Resources, or a web address
  std::string target;
  std::string tip;
  Source archive;  ///< not given for a web address
};

/// A program to run before or after the install.
struct Program {
  std::string name;            ///< in Resources, or a path specifier; empty: none
  std::filesystem::path file;  ///< what to put into Resources under this name, if anything
};

struct Description {
  std::string windowTitle, message, copyright, urlAddress, urlText, completionUrl;
  Note agreement, info, preInstallNotes, postInstallNotes;
  Picture logo, picture, background;
  std::vector<std::string> labels;
  bool centerMessage = false;

  std::string targetFolder;
  bool applicationFolder = false, patch = false;
  bool promptToReplace = true;  ///< what stands there is somebody's
  std::string minOs, minRam;
  Source payload;
  Split split;

  std::vector<Item> choices, options;
  std::vector<std::string> actions;
  Program before, after;
  std::int64_t cleanup = 0;
  Source cleanupProgram;

  std::string timeStamp;
  std::int64_t encryptionLength = 0;
};

/// Reads the JSON file `file`. Paths in it count from its own folder. Throws Refusal.
Description ReadDescription(const std::filesystem::path& file);

/// Name of the Payload's one top-level folder: the last name of the target folder, for a patch with "Patch"
/// behind it.
std::string PayloadFolder(const Description& description);

}  // namespace pack
