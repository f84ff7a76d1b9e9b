// SPDX-License-Identifier: MIT
// What an archive will make, settled before the first byte is written. Needs the archive's bytes only.
#pragma once

#include <atomic>
#include <cstdint>
#include <set>
#include <vector>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/planning/Links.h"
#include "archive/planning/Tree.h"
#include "archive/reading/Directory.h"
#include "archive/reading/Zstandard.h"

namespace archive {

/// Of an archive that is packed as a whole.
struct SolidPlan {
  std::vector<Frame> frames;         // none in any other archive
  std::vector<std::uint32_t> order;  // entries, by their places in the content
  std::vector<NodeId> nodes;         // of each entry; kNoNode for what is no file

  bool Is() const { return !frames.empty(); }
};

struct Plan {
  Directory directory;
  Tree tree;
  std::vector<NodeId> files;  // by the place of their data
  std::vector<Link> links;
  std::set<NodeId> linkedTo;  // top-level items that links reach by their names
  std::uint64_t bytes = 0;    // of all files
  SolidPlan solid;

  const Entry& EntryOf(NodeId node) const { return directory.entries[tree[node].entry]; }
};

/// A name that a run takes for its staging folder; no archive may bring one.
bool IsStagingName(std::string_view name);

/// Reads and judges the whole structure: directory, names, links, and local headers but for a solid archive.
/// Gives up where `stop` is set.
Result<Plan> ReadPlan(const Source& source, unsigned threads, const std::atomic<bool>* stop = nullptr);

}  // namespace archive
