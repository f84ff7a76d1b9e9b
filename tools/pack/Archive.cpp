// SPDX-License-Identifier: MIT
// Archives in their ways.
#include "pack/Archive.h"

#include <utility>
#include <vector>

#include "pack/Progress.h"
#include "pack/archive/PlainZip.h"
#include "pack/archive/Solid.h"
#include "pack/archive/Tree.h"

namespace pack {

namespace fs = std::filesystem;

void ArchiveFolder(const std::string& field, const fs::path& folder, const std::string& top,
                   const Compression& compression, const fs::path& archive) {
  std::vector<TreeItem> items = ListTree(field, folder, top);
  std::uint64_t bytes = 0;
  for (const TreeItem& item : items) bytes += item.size;
  Progress::Current().Begin(bytes);
  if (compression.method == Method::kSolid) {
    WriteSolid(std::move(items), compression.level, archive);
  } else {
    WritePlainZip(items, compression, archive);
  }
}

}  // namespace pack
