// SPDX-License-Identifier: MIT
// The archive that is being written.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace pack {

/// A new file. What can't be written is refused.
class OutputFile {
 public:
  explicit OutputFile(const std::filesystem::path& file);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::uint64_t Size() const { return fSize; }
  void Append(std::string_view bytes);
  /// Bytes that are there already.
  void Overwrite(std::uint64_t place, std::string_view bytes);
  /// Takes back all that was written behind `size`.
  void Shorten(std::uint64_t size);
  void Close();

 private:
  void WriteAt(std::uint64_t place, std::string_view bytes);
  [[noreturn]] void Refuse() const;

  std::filesystem::path fName;
  int fFile = -1;
  std::uint64_t fSize = 0;
};

}  // namespace pack
