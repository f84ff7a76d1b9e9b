// SPDX-License-Identifier: MIT
// What nobody's order deletes or replaces, be it a package's, a script's or the cleanup's.
#pragma once

#include <string>
#include <vector>

/// Absolute paths, each also with its links resolved.
class KeptFolders {
 public:
  /// A path that isn't absolute, and the root, which stays anyway, are passed over.
  void Add(const std::string& path);
  /// What stays on every machine: the home folders of the people that have an account, this user's folders
  /// for documents, settings and applications, the temporary folder and the machine's applications.
  void AddEverybodys();
  /// Is it one of them, or does it hold one?
  bool IsOrHolds(const std::string& path) const;

 private:
  std::vector<std::string> fPaths;
};

/// Why the item at the absolute `path` must stay, as a clause; empty when it may go, and where there is none.
/// It stays when it is the root, a folder of the system's or a mount point, when it is one of `kept` or holds
/// one, and when something is mounted in it. A link is judged as itself, not as what it leads to.
std::string ReasonToStay(const std::string& path, const KeptFolders& kept);

/// Is it one that the file hierarchy standard puts into the root, /usr, /usr/local or /var, judged by the
/// name of `place` alone? An absolute path without closing "/".
bool IsFolderOfTheSystem(const std::string& place);
