// SPDX-License-Identifier: MIT
// Takes away from the process, or from one thread, what expanding doesn't need.
#pragma once

#include "base/Descriptor.h"

namespace archive {

/// No new privileges, no network, no other programs; for this thread and those that it starts. What the
/// kernel doesn't offer is left out: expanding is safe without.
void RestrictCalls();

/// A set of rules that allows changes below `folder`, and to remove empty folders below `above`, and no other
/// access to files by name; -1 for none. Descriptors that are open already stay usable.
class FolderWall {
 public:
  explicit FolderWall(int folder = -1, int above = -1);
  /// Puts the wall around the calling thread and those that it starts.
  void Enter() const;

 private:
  Descriptor fRules;
};

}  // namespace archive
