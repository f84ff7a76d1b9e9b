// SPDX-License-Identifier: MIT
// An archive of what a tree's items are called and where its links lead, without the content of its files.
#pragma once

#include <string>
#include <vector>

#include "pack/archive/Tree.h"

namespace pack {

/// A zip whose files are all empty: all that a plan looks at is in it.
std::string HollowZip(std::vector<TreeItem> items);

}  // namespace pack
