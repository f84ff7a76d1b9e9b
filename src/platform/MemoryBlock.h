// SPDX-License-Identifier: MIT
// Bytes of which nobody knows how many will come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>

/// Grows by pieces of the system's own memory, so that it never holds a byte twice, neither while it grows
/// nor while it becomes a string.
class MemoryBlock {
 public:
  std::uint64_t Size() const { return fPieces.empty() ? 0 : (fPieces.size() - 1) * kPiece + fUsed; }
  /// Where the next bytes go: one at least, a piece (1 MiB) at most. Throws std::bad_alloc.
  std::span<char> Room();
  /// So many bytes of the room have been filled.
  void Grow(std::size_t count) { fUsed += count; }
  /// All bytes as one string; the block is empty then. Throws std::bad_alloc, and has changed nothing.
  std::string Join();

 private:
  static constexpr std::size_t kPiece = 1 << 20;
  struct Unmap {
    void operator()(char* piece) const;
  };

  std::deque<std::unique_ptr<char, Unmap>> fPieces;
  std::size_t fUsed = 0;  // of the last piece
};
