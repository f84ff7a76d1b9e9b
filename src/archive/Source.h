// SPDX-License-Identifier: MIT
// The archive's bytes, read at any place by any number of threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace archive {

class Source {
 public:
  virtual ~Source() = default;
  std::uint64_t Size() const { return fSize; }
  /// Whether all of it may be gone through for the sake of a better sentence.
  virtual bool IsCheap() const { return true; }
  /// Reads all of `length` bytes; false where the source ends before or the system refuses (errno says
  /// why; 0 for an early end).
  [[nodiscard]] virtual bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const = 0;

 protected:
  explicit Source(std::uint64_t size) : fSize(size) {}

 private:
  std::uint64_t fSize;
};

/// A regular file by its descriptor, which the caller keeps open.
class FileSource : public Source {
 public:
  FileSource(int descriptor, std::uint64_t size) : Source(size), fDescriptor(descriptor) {}
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;

 private:
  int fDescriptor;
};

/// A file as packages store it: every second byte, from the second, is raised by one.
class ScrambledSource : public FileSource {
 public:
  using FileSource::FileSource;
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;
};

class MemorySource : public Source {
 public:
  explicit MemorySource(std::string bytes) : Source(bytes.size()), fBytes(std::move(bytes)) {}
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;

 private:
  std::string fBytes;
};

}  // namespace archive
