// SPDX-License-Identifier: MIT
// What of the handling of files is the system's own, and no standard's.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/Descriptor.h"

/// Renames an item, from folder to folder, to a name that is free: EEXIST where it isn't, EINVAL or ENOSYS
/// where the file system can't tell.
[[nodiscard]] bool RenameToFreeName(int from, const char* name, int to, const char* newName);
/// Two items take each other's place in one step; EINVAL or ENOSYS where the file system can't.
[[nodiscard]] bool ExchangeItems(int from, const char* name, int to, const char* otherName);

/// A file in `folder` that has no name and so goes with its last descriptor. None where the file system has
/// no such files.
Descriptor OpenUnnamed(const std::string& folder);
/// Gives such a file a name, which must be free.
[[nodiscard]] bool GiveName(int file, const std::string& path);
/// A file in memory. `inherited`: programs that this process starts get it too.
Descriptor OpenInMemory(bool inherited);
/// A path by which this process reaches an open file.
std::string PathOfDescriptor(int file);
/// Is it such a path?
bool IsPathOfDescriptor(const std::string& path);

/// Copies up to `count` bytes inside the system, from where both files stand. As write(2) answers.
ssize_t CopyRange(int source, int target, std::size_t count);

struct ItemFacts {
  mode_t mode = 0;
  uid_t owner = 0;
  std::uint64_t names = 0;
  std::uint64_t bytes = 0;  // that it takes on the disk
  bool frozen = false;      // may be neither changed nor removed, by whomever
  bool mounted = false;
};
/// Of an item, links not followed.
[[nodiscard]] bool LookAtItem(int folder, const char* name, ItemFacts& facts);
