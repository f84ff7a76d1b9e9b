// SPDX-License-Identifier: MIT
// A file of the tree that is being packed, read from its first byte to its last.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "pack/archive/Tree.h"

namespace pack {

/// Whatever it can't do is refused with a sentence that names the file: one that can't be read, or that isn't
/// what it was when the tree was listed.
class InputFile {
 public:
  explicit InputFile(const TreeItem& item);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// The next `size` bytes, which must be there.
  void Read(char* to, std::size_t size);
  /// As many of the `size` bytes at `place` as there are; leaves alone where Read goes on.
  std::string Sample(std::uint64_t place, std::size_t size) const;
  /// To be called behind the last byte: refuses a file that has changed under the reading.
  void Finish() const;
  /// For the next reading.
  void Rewind() { fPlace = 0; }
  [[noreturn]] void RefuseChange() const;

 private:
  std::size_t ReadAt(char* to, std::size_t size, std::uint64_t place) const;

  const TreeItem& fItem;
  int fFile = -1;
  std::uint64_t fPlace = 0;
};

}  // namespace pack
