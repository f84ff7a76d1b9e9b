// SPDX-License-Identifier: MIT
// A fresh folder for one case, and small disks that fill up or refuse to be written.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;

/// Gone with all that it holds when the object goes. Names are relative to the folder.
class TemporaryTree {
 public:
  TemporaryTree();
  ~TemporaryTree();
  TemporaryTree(const TemporaryTree&) = delete;
  TemporaryTree& operator=(const TemporaryTree&) = delete;

  /// The absolute path, links resolved; of the folder itself without a name.
  std::string Path(const std::string& name = "") const { return name.empty() ? fRoot : fRoot + "/" + name; }
  /// These make the folders on the way, and give the path.
  std::string Write(const std::string& name, const std::string& bytes, unsigned mode = 0644) const;
  std::string Folder(const std::string& name) const;
  std::string Link(const std::string& name, const std::string& target) const;
  /// All bytes; "<none>" where no file can be read.
  std::string Read(const std::string& name) const;
  bool Has(const std::string& name) const;

  /// Every item below `name`, which may be missing, by its path there: kind, mode, and content or target.
  /// Two of them are equal when nothing has changed.
  using Contents = std::map<std::string, std::string>;
  Contents Look(const std::string& name = "") const;

 private:
  std::string fRoot;
};

/// The texts between the bars of `list`.
std::vector<std::string> Words(const std::string& list);

/// What is to be found, in words: "a/" is a plain folder, "a/b: text" a plain file with that text, and
/// "a/c: link to b" whatever Look() says of it.
TemporaryTree::Contents Items(const std::string& list);

/// A file system of its own on an existing folder, for this process alone. Needs the right to mount;
/// without it Mounted() is false and the case skips.
class SmallDisk {
 public:
  SmallDisk(const std::string& folder, unsigned kilobytes, unsigned items = 0);  // 0: any number
  ~SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  bool Mounted() const { return fMounted; }
  void MakeReadOnly() const;

 private:
  std::string fFolder;
  bool fMounted = false;
};
