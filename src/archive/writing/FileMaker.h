// SPDX-License-Identifier: MIT
// Creates the files of a plan and completes them.
#pragma once

#include <cstddef>

#include "archive/Result.h"
#include "archive/planning/Plan.h"
#include "archive/writing/FolderCache.h"
#include "base/Descriptor.h"

namespace archive {

/// One for each thread. Keeps at most `descriptors` folders open.
class FileMaker {
 public:
  FileMaker(const Plan& plan, int root, std::size_t descriptors, MadeFolders& made);
  /// A new file, and the folders above it; nothing may stand in its place.
  Result<Descriptor> Create(NodeId node);
  /// Sets the time that the archive states, and closes.
  static Status Complete(Descriptor file, const Entry& entry);

 private:
  const Plan& fPlan;
  FolderCache fFolders;
};

}  // namespace archive
