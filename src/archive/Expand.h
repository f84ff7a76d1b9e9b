// SPDX-License-Identifier: MIT
// Expands an archive into a folder: all of it or nothing.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "archive/Result.h"

namespace archive {

struct ExpandOptions {
  std::string archive;
  std::string folder;  // made if it is missing, unless `mustBeNew`
  /// The folder exists, and nothing that stands in it is replaced: see Publisher.
  bool mustBeNew = false;
  /// The folder was made for this one expansion, and goes with it if it fails.
  bool folderIsOurs = false;
  /// The archive's bytes are scrambled, as in a package.
  bool scrambled = false;
  enum class Extent {
    All,
    Check,  // every entry is read and its checksum compared; nothing is written
    Plan    // only the archive's structure is judged; the watcher is told the total
  };
  Extent extent = Extent::All;
  /// Have the data on disk before it is shown.
  bool flush = true;
  /// Shut the calling thread in first. It stays so: for a process that does nothing else.
  bool wall = false;
  /// 0: one for each processor.
  unsigned workers = 0;
  /// Set by a signal's handler, for instance; looked at a few times a second.
  const std::atomic<bool>* stop = nullptr;
};

/// Told by the thread that called Expand.
class ExpandWatcher {
 public:
  virtual ~ExpandWatcher() = default;
  /// The plan is accepted: so many files and folders, the largest file of so many bytes.
  virtual void Planned(std::uint64_t /*items*/, std::uint64_t /*largest*/) {}
  /// So many bytes will be written.
  virtual void Total(std::uint64_t) {}
  /// So many are. Rises, about 20 times a second.
  virtual void Written(std::uint64_t) {}
};

/// On failure the folder is as it was. Items that a merge replaces are kept until all are in their places,
/// where the file system can exchange two names.
Status Expand(const ExpandOptions& options, ExpandWatcher& watcher);

}  // namespace archive
