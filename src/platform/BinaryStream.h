// SPDX-License-Identifier: MIT
// Bytes of a file, read or written in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/FolderItem.h"

/// Owns its descriptor; the stream closes when it goes.
class BinaryStream {
 public:
  /// For reading. No stream when the item is missing, a folder or unreadable. open(2)
  static std::optional<BinaryStream> Open(const FolderItem& item);
  /// A new file for writing. Whatever file or link bears the name is removed first; a folder is not,
  /// and then there is no stream. The file's mode is 0666 less the process's mask. An UnnamedFile is emptied.
  static std::optional<BinaryStream> Create(const FolderItem& item);

  BinaryStream(BinaryStream&& other) noexcept;
  BinaryStream& operator=(BinaryStream&&) = delete;
  ~BinaryStream();

  std::uint64_t Length() const;
  /// Reads up to `count` bytes into `buffer`; fewer only at the file's end or on an error.
  std::size_t Read(char* buffer, std::size_t count);
  /// All that is left of the file.
  std::string ReadAll();
  /// The whole file, if it has no more than `most` bytes and can be read to its end.
  static std::optional<std::string> Content(const FolderItem& item, std::uint64_t most);
  /// False when not every byte was taken, as on a full disk.
  [[nodiscard]] bool Write(const char* bytes, std::size_t count);
  [[nodiscard]] bool Write(const std::string& bytes) { return Write(bytes.data(), bytes.size()); }
  /// Writes all that is left of `source`, inside the kernel where it can. `goOn` runs every few megabytes.
  /// False when `source` couldn't be read to its end or not every byte was taken, and when `goOn` says so.
  [[nodiscard]] bool WriteAllOf(BinaryStream& source, const std::function<bool()>& goOn);
  /// False when the system reports a late write error.
  bool Close();

 private:
  explicit BinaryStream(int descriptor) : fDescriptor(descriptor) {}
  int fDescriptor;
};
