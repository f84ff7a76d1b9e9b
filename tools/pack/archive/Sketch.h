// SPDX-License-Identifier: MIT
// What is known of a file's content before it is packed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pack/archive/Tree.h"

namespace pack {

struct Sketch {
  bool dense = false;  ///< compressed already
  /// Hashes of some of its parts, ascending. The places are chosen by what stands there, so that files that
  /// share a part share its hash, wherever it is.
  std::vector<std::uint32_t> marks;
};

/// Of each item, with all cores. Marks are taken of files of at most `longest` bytes that aren't dense, with
/// 0 of none; every 512 bytes or, in a large tree, less often, so that they fit into 16 MiB.
std::vector<Sketch> TakeSketches(const std::vector<TreeItem>& items, std::size_t longest);

}  // namespace pack
