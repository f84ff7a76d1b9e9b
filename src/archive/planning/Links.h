// SPDX-License-Identifier: MIT
// Symbolic links of an archive: where they lead, judged before anything is written.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "archive/planning/Tree.h"

namespace archive {

struct Link {
  NodeId node = kNoNode;
  std::string target;
};

constexpr std::size_t kLongestTarget = 4095;

/// Accepts links that stay below the root wherever they are followed to, also through other links of the
/// archive. `named` gets the top-level items that they step into by name. A link may lead to something that
/// the archive does not hold; from there ".." is refused, since nobody knows where it would lead.
Status CheckLinks(const Tree& tree, const std::vector<Link>& links, std::set<NodeId>& named);

}  // namespace archive
