// SPDX-License-Identifier: MIT
// What is known of a tree before it is touched.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

struct TreeFacts {
  bool deletable = true;    // by this user, as far as modes, owners and flags tell
  std::uint64_t bytes = 0;  // that the disk gets back
  std::uint64_t items = 0;  // files and folders that it gets back
};

/// Looks at the item at `path` and all that it holds; no link is followed. Not deletable is what holds
/// another file system, an immutable item, a folder of another user's in which something lies, or another
/// user's item in a sticky folder. `tick` runs every few items.
TreeFacts LookAtTree(const std::string& path, const std::function<void()>& tick);
