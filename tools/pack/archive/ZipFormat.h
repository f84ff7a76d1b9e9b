// SPDX-License-Identifier: MIT
// The records of a zip archive, as bytes. Every entry says all that it has to say in its local header, once
// more in the directory; what is beyond 32 bits goes into the extra field for it (zip64).
#pragma once

#include <cstdint>
#include <string>

#include "pack/archive/Tree.h"

namespace pack {

constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;

struct ZipEntry {
  const TreeItem* item = nullptr;
  std::uint16_t method = kStored;
  std::uint32_t crc = 0;
  std::uint64_t packed = 0;  ///< never more than `size`
  std::uint64_t size = 0;
  std::uint64_t place = 0;  ///< of the local header
};

/// As long for an entry whose sum and packed size aren't known as for one with these.
std::string LocalHeader(const ZipEntry& entry);

/// The directory, which grows as the entries are written.
class ZipDirectory {
 public:
  void Add(const ZipEntry& entry);
  /// The whole of it with the records behind it, to stand at `place`.
  std::string End(std::uint64_t place);

 private:
  std::string fBytes;
  std::uint64_t fCount = 0;
};

}  // namespace pack
