// SPDX-License-Identifier: MIT
// The tree of items that an archive makes: one node an item, folders that are only implied included.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "archive/Result.h"
#include "archive/reading/Directory.h"
#include "archive/reading/Names.h"

namespace archive {

using NodeId = std::uint32_t;
constexpr NodeId kRoot = 0;
constexpr NodeId kNoNode = 0xFFFFFFFF;

struct Node {
  std::string_view name;
  NodeId parent = kRoot;
  std::uint32_t entry = kNoEntry;  // none for the root and for implied folders
  Kind kind = Kind::Folder;

  static constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;
};

/// A component of a checked path as system calls want it.
class CName {
 public:
  explicit CName(std::string_view name) { fBytes[name.copy(fBytes, kLongestComponent)] = '\0'; }
  operator const char*() const { return fBytes; }

 private:
  char fBytes[kLongestComponent + 1];
};

class Tree {
 public:
  Tree();
  /// Adds the item of an entry and the folders above it. Refuses a name that is taken and a way through
  /// anything but folders.
  Status Add(const Entry& entry, std::uint32_t index);
  void Reserve(std::size_t items);

  /// The item of that name in a folder; kNoNode if there is none.
  NodeId Find(NodeId folder, std::string_view name) const;
  /// Parents stand before what they hold; the first one is the root.
  const std::vector<Node>& Nodes() const { return fNodes; }
  const Node& operator[](NodeId node) const { return fNodes[node]; }
  /// The whole path, for messages.
  std::string Path(NodeId node) const;

 private:
  std::size_t Slot(NodeId folder, std::string_view name) const;
  NodeId Insert(NodeId folder, std::string_view name, std::size_t slot);
  Result<NodeId> FolderOf(const Entry& entry);
  void Grow(std::size_t slots);

  std::vector<Node> fNodes;
  std::vector<NodeId> fSlots;  // open addressing; a power of two
  std::uint64_t fSeed;
  std::uint64_t fImplied = 0;
  std::string_view fLastFolder;  // neighbours mostly share a folder
  NodeId fLastNode = kRoot;
};

}  // namespace archive
