// SPDX-License-Identifier: MIT
// The folder that an archive is expanded into, made if it is missing.
#pragma once

#include <string>
#include <vector>

#include "archive/Result.h"
#include "base/Descriptor.h"

namespace archive {

class TargetFolder {
 public:
  /// Opens as much of `path` as exists. The path is the user's: links on it are followed.
  static Result<TargetFolder> Find(const std::string& path);
  TargetFolder(TargetFolder&&) = default;
  TargetFolder& operator=(TargetFolder&&) = delete;
  /// Removes the folders that were made, unless they were kept.
  ~TargetFolder();

  bool Exists() const { return fMissing.empty(); }
  /// Makes what is missing.
  Status Make();
  /// A folder that exists counts as made: it was, for this one expansion.
  Status CountAsMade();
  void Keep() { fMade.clear(); }
  /// The folder in which the first of the made ones stands; -1 if none was made.
  int Above() const { return fMade.empty() ? -1 : fMade.front().parent.Get(); }
  /// The folder once it exists; before that, the last one on the way that does.
  int Get() const { return fOpened.Get(); }

 private:
  struct Made {
    Descriptor parent;
    std::string name;
  };
  TargetFolder() = default;
  std::string fPath;
  Descriptor fOpened;
  std::vector<std::string> fMissing;
  std::vector<Made> fMade;
};

}  // namespace archive
