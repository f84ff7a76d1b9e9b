// SPDX-License-Identifier: MIT
// Zip archives as every tool writes them, deflated by all cores.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "pack/archive/Compression.h"
#include "pack/archive/Tree.h"

namespace pack {

struct PlainLimits {
  std::size_t blockSize = 1 << 20;  ///< of what is deflated at once
  std::size_t workers = 0;          ///< 0: as many as there are cores
};

/// Entries come in the order of `items`. Files that deflating doesn't make smaller are stored, and all are
/// with Method::kStore. The number of workers doesn't show in the bytes.
void WritePlainZip(const std::vector<TreeItem>& items, const Compression& compression,
                   const std::filesystem::path& archive, const PlainLimits& limits = {});

}  // namespace pack
