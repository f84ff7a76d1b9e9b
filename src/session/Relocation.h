// SPDX-License-Identifier: MIT
// Where the installer runs from.
#pragma once

#include <string>

enum class RunsFrom {
  Anywhere,
  OwnCopy,         // made by another installer, to which it leaves the medium
  TemporaryFolder  // where only a system puts a program that the user has just downloaded
};

/// By the names alone: a copy of ours lies in a folder of four digits directly below the temporary folder.
/// Both paths end in "/"; without a temporary folder nothing lies there.
RunsFrom ReadLocation(const std::string& applicationPath, const std::string& temporaryPath);

/// The temporary folder's path, links resolved, with closing "/"; empty where there is none.
std::string TemporaryPath();
