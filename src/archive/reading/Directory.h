// SPDX-License-Identifier: MIT
// The directory of an archive: one entry for each item, read and judged without the machine.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/reading/EndRecord.h"

namespace archive {

enum class Kind : std::uint8_t { File, Folder, Link };

struct Entry {
  std::string_view storedName;  // bytes in Directory::bytes
  std::string_view name;        // UTF-8 path, no "/" at its end
  std::uint64_t compressed = 0;
  std::uint64_t size = 0;
  std::uint64_t header = 0;   // offset of the local header in the file, or in what its frames hold
  std::uint64_t data = 0;     // offset of the data; filled in by the plan
  std::int64_t modified = 0;  // seconds since 1970
  std::uint32_t crc = 0;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  std::uint16_t mode = 0;  // at most 0777
  Kind kind = Kind::File;
  /// No zip64 field: `size` may be the rest of 2^32 if the data goes on beyond it.
  bool sizeWraps = false;
  /// Resource forks and the like: their headers are checked as every entry's, their data is not read.
  bool leftOut = false;

  bool Deflated() const { return method != 0; }
};

struct Directory {
  std::unique_ptr<char[]> bytes;
  std::deque<std::string> decodedNames;  // those that differ from their stored bytes
  std::vector<Entry> entries;            // in the directory's order
};

/// Reads all entries. Refuses names that may not be created, encrypted or otherwise unreadable entries,
/// devices, lengths that contradict each other, and a count that isn't the number of entries.
Result<Directory> ReadDirectory(const Source& source, const DirectoryPlace& place,
                                const std::atomic<bool>* stop);

}  // namespace archive
