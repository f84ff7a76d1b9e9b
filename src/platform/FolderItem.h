// SPDX-License-Identifier: MIT
// One item of the file system, named by its path. The item need not exist.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Every operation goes to the file system at the moment of the call; nothing is cached.
/// A boolean result is false when the system refused, and nothing is shown to the user.
class FolderItem {
 public:
  /// `path` is an absolute native path in UTF-8, with or without a closing "/".
  explicit FolderItem(std::string path);

  /// The path as given, without closing "/" (but "/" itself stays).
  const std::string& NativePath() const { return fPath; }
  /// The path quoted as one word of a POSIX shell's command line, whatever it holds.
  std::string ShellPath() const;
  std::string Name() const;
  FolderItem Parent() const;
  FolderItem Child(const std::string& name) const;
  /// The path with every link and ".." resolved, as far as it exists. realpath(3)
  std::string ResolvedPath() const;
  /// The absolute path with the links on the way resolved, but not one of the item's own name.
  std::string Place() const;
  /// The items of a folder as they are (links not followed), in the file system's order. None where the
  /// folder can't be read to its end.
  std::optional<std::vector<FolderItem>> List() const;
  /// The same for callers to whom a folder that can't be read is an empty one.
  std::vector<FolderItem> Children() const { return List().value_or(std::vector<FolderItem>()); }

  /// True also for a link that leads nowhere: the name is taken.
  bool Exists() const;
  /// True for a folder and for a link to one.
  bool Directory() const;
  /// True for a symbolic link itself.
  bool Alias() const;
  /// True for a plain file itself: no link, folder or device.
  bool IsFile() const;
  /// True for a folder on which another file system is mounted.
  bool IsVolume() const;
  /// True when the item is this user's, is no link, and no other user can put something else in its place.
  bool IsOwn() const;
  /// Bytes of a file, links followed; 0 when there is none.
  std::uint64_t Length() const;
  /// May this process create items in the folder (or write the file)? access(2), nothing is tried.
  bool IsWriteable() const;
  /// False for a name that begins with "." or that the folder's ".hidden" list names.
  bool Visible() const;
  void SetVisible(bool visible) const;

  [[nodiscard]] bool CreateAsFolder() const;
  /// Copies one file with its mode and times, or makes an empty folder of the source's mode.
  /// `target` must not exist: nothing is overwritten and no link at `target` is followed. A link is
  /// followed at the source unless `keepLink`; then the link itself is copied. What a failed copy
  /// wrote stays only where it has the source's length, so that the caller can compare, or where the file
  /// system takes no file without a name.
  [[nodiscard]] bool CopyFileTo(const FolderItem& target, bool keepLink) const;
  /// Gives an existing folder the mode and times of this one.
  void CopyAttributesTo(const FolderItem& target) const;
  /// Moves the item with all that it holds and replaces what stands at `target`. The new one is in its
  /// place before the old one is gone; on failure all is as it was.
  enum class Moved { Yes, No, OtherFileSystem };
  [[nodiscard]] Moved MoveFileTo(const FolderItem& target) const;
  /// An item beside this one that doesn't exist yet: hidden, under a name that can't be guessed.
  FolderItem FreshSibling() const;
  /// Deletes a file, a link itself, or an empty folder.
  [[nodiscard]] bool Delete() const;
  /// Deletes the item with all that it holds. Walks by folder descriptors: no link is followed, no
  /// depth is too deep, and folders without write permission are opened up for their owner first.
  bool DeleteTree() const;
  /// May the item be deleted with all that it holds, as far as can be known without trying? Not where a disk
  /// is mounted in it, something in it is immutable, or a folder in it belongs to somebody else.
  bool CanBeDeleted() const;
  struct Room {
    std::uint64_t bytes = 0;
    std::uint64_t items = 0;  // files and folders
  };
  /// What the disk gets back when the item goes with all that it holds.
  Room RoomTaken() const;
  /// What this user can still write to the folder's file system; the largest numbers where it doesn't tell.
  Room RoomLeft() const;
  /// chmod(2) that follows no link. `mode` holds permission bits only; false for a link.
  bool SetPermissions(unsigned mode) const;
  /// Permission bits, or 0 when the item is missing.
  unsigned Permissions() const;

  /// Opens the item as the desktop would: see Machine::Launch.
  bool Launch(bool activate) const;

 private:
  std::string fPath;
};
