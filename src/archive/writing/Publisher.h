// SPDX-License-Identifier: MIT
// Brings the finished items from the staging folder to their places.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "archive/Result.h"
#include "archive/planning/Plan.h"
#include "archive/writing/FolderCache.h"

namespace archive {

class Publisher {
 public:
  /// `mustBeNew`: nothing that the folder holds is replaced. The item that the archive is for, named
  /// `expected` or that and "Patch", is refused where the name is taken; another one takes a free name,
  /// unless a link leads to it by its own.
  Publisher(const Plan& plan, int folder, bool mustBeNew, std::string expected);

  /// Looks at what stands in the folder already. A folder meets a folder: they are merged. A file or a link
  /// replaces a file or a link. All else is refused.
  Status Check();

  /// Whether the item itself is renamed; items below it come along.
  bool IsRenamed(NodeId node) const { return node != kRoot && fMerged[fPlan.tree[node].parent]; }

  /// Renames each item into place, the expected one last: there is the old one or the new one at any time.
  /// A failure takes back what was renamed already. What was replaced is left in the staging folder.
  Status Publish(int staging);

 private:
  struct Locked {
    NodeId node;
    std::uint16_t mode;
  };
  struct Moved {
    NodeId node;
    bool exchanged;
  };
  /// Whether it is the item that the archive is for.
  bool IsExpected(NodeId node) const;
  Status CheckPlace(NodeId node);
  Status Place(NodeId node, FolderCache& made);
  Status FindFreeName(NodeId node, int place);
  /// The item's name where it goes.
  std::string PlaceName(NodeId node) const;
  bool Rename(NodeId node, int from, int to);
  void TakeBack(FolderCache& made);
  Status Unlock(const Locked& locked);
  void LockAgain();

  const Plan& fPlan;
  const int fFolder;
  const bool fMustBeNew;
  const std::string fExpected;
  std::map<NodeId, std::string> fFreeNames;
  FolderCache fPlaces;
  std::vector<bool> fMerged;    // folders that exist on both sides
  std::vector<Locked> fLocked;  // of these, those that forbid their owner to write
  std::vector<Moved> fMoved;
};

}  // namespace archive
