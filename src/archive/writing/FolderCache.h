// SPDX-License-Identifier: MIT
// Descriptors of a tree's folders, opened step by step so that no link is ever followed.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "archive/planning/Plan.h"

namespace archive {

/// Which folders of a plan exist already; shared by all who make them.
class MadeFolders {
 public:
  explicit MadeFolders(const Plan& plan)
      : fMade(std::make_unique<std::atomic<bool>[]>(plan.tree.Nodes().size())) {}
  bool IsMade(NodeId node) const { return fMade[node].load(std::memory_order_acquire); }
  void SetMade(NodeId node) { fMade[node].store(true, std::memory_order_release); }

 private:
  std::unique_ptr<std::atomic<bool>[]> fMade;
};

/// The mode a folder gets: the archive's, or the common one for a folder that is only implied.
std::uint16_t FolderMode(const Plan& plan, NodeId node);

/// Whether that mode denies its owner something: such a folder can be neither filled nor moved.
bool ForbidsOwner(const Plan& plan, NodeId node);

/// Of a folder that its owner may not even read; never of what a link in its place leads to (fchmodat).
bool SetMode(int parent, const char* name, std::uint16_t mode);

/// One for each thread. Keeps at most `limit` descriptors; they serve as starting points only (O_PATH).
class FolderCache {
 public:
  /// With `made`, folders that are missing are made on the way.
  FolderCache(const Plan& plan, int root, std::size_t limit, MadeFolders* made = nullptr);
  ~FolderCache();
  FolderCache(const FolderCache&) = delete;
  FolderCache& operator=(const FolderCache&) = delete;

  /// The folder's descriptor, valid until the next call; -1 where it can't be opened (errno says why, and
  /// ENOTDIR or ELOOP that something else stands in its place).
  int Open(NodeId folder);

 private:
  struct Slot {
    NodeId node = kNoNode;
    int descriptor = -1;
    bool used = false;
  };
  int OpenBelow(int parent, NodeId folder);
  void Keep(NodeId folder, int descriptor);
  void DropAllBut(int descriptor);

  const Plan& fPlan;
  int fRoot;
  MadeFolders* fMade;
  std::vector<Slot> fSlots;
  std::size_t fHand = 0;
  std::unordered_map<NodeId, std::size_t> fSlotOf;
  std::vector<NodeId> fWay;
};

}  // namespace archive
