// SPDX-License-Identifier: MIT
// The order of a solid archive's entries: what is alike stands together.
#pragma once

#include <cstddef>
#include <vector>

#include "pack/archive/Sketch.h"
#include "pack/archive/Tree.h"

namespace pack {

/// Folders and links first, by their names; then the files, those that are dense last. A file is followed by
/// the one that shares most with the frame of `frameSize` bytes in which it lies, or else by the next of the
/// same extension and name. Gives the number of items before the dense ones.
std::size_t SortForSolid(std::vector<TreeItem>& items, std::vector<Sketch> sketches, std::size_t frameSize);

}  // namespace pack
