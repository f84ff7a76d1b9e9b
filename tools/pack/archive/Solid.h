// SPDX-License-Identifier: MIT
// Solid archives: a zip of stored entries, compressed as a whole in frames. Decompressed by any Zstandard it
// is a zip that any tool opens.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "pack/archive/Compression.h"
#include "pack/archive/Tree.h"

namespace pack {

struct SolidLimits {
  std::size_t frameSize = 0;  ///< 0: 16 MiB
  std::size_t workers = 0;    ///< 0: as many as there are cores
};

/// Neither the number of workers nor the order of `items` shows in the bytes.
void WriteSolid(std::vector<TreeItem> items, Level level, const std::filesystem::path& archive,
                const SolidLimits& limits = {});

}  // namespace pack
