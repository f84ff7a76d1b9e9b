// SPDX-License-Identifier: MIT
// Finds the directory of a zip file by the records at the file's end.
#pragma once

#include <cstdint>

#include "archive/Result.h"
#include "archive/Source.h"

namespace archive {

/// Where the directory stands and how the numbers in it are to be read.
struct DirectoryPlace {
  std::uint64_t start = 0;
  std::uint64_t length = 0;
  std::uint64_t count = 0;
  /// The count has 16 bits only and may have wrapped.
  bool countWraps = false;
  /// Bytes that stand before the archive proper; added to every stored offset.
  std::uint64_t shift = 0;
  /// Stored offsets and lengths are rests of 2^32: a file beyond 4 GiB written without zip64 records.
  bool wrapped = false;
  /// The zip64 records are there, so no field of an entry may have wrapped.
  bool has64 = false;
};

/// Refuses a file with no end record, with two possible ones, with several discs, or with records that
/// contradict each other or the place they stand at.
Result<DirectoryPlace> FindDirectory(const Source& source);

}  // namespace archive
