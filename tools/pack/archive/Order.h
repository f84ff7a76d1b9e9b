// SPDX-License-Identifier: MIT
// The order of a solid archive's entries: what is alike stands together.
#pragma once

#include <cstddef>
#include <vector>

#include "pack/archive/Tree.h"

namespace pack {

/// Folders and links first, by their names, then the files: same extension, same name, same folder. Those
/// that are marked as `dense` come last. Gives the number of items before these.
std::size_t SortForSolid(std::vector<TreeItem>& items, const std::vector<bool>& dense);

}  // namespace pack
