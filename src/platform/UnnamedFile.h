// SPDX-License-Identifier: MIT
// A file that goes with its process, however that ends.
#pragma once

#include <memory>
#include <optional>

#include "platform/FolderItem.h"

/// Lies in a folder, so to speak, but under no name: nobody else can take or exchange it.
class UnnamedFile {
 public:
  /// An empty one. None where `folder` takes no file. open(2), O_TMPFILE
  static std::optional<UnnamedFile> Make(const FolderItem& folder);
  UnnamedFile(UnnamedFile&& other) noexcept;
  UnnamedFile& operator=(UnnamedFile&& other) noexcept;
  ~UnnamedFile();

  /// A path by which this process can read and write it; see BinaryStream::Create.
  FolderItem Item() const;
  /// Is it the path of such a file?
  static bool IsOne(const FolderItem& item);

 private:
  struct Held;
  explicit UnnamedFile(std::unique_ptr<Held> held);
  std::unique_ptr<Held> fHeld;
};
