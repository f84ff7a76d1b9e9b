// SPDX-License-Identifier: MIT
// The frames of a Zstandard file and the table that tells where they are.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "archive/Result.h"
#include "archive/Source.h"

namespace archive {

/// What one frame may hold, and how far back it may refer: what a thread keeps room for.
constexpr std::uint32_t kLargestFrame = 16 << 20;

struct Frame {
  std::uint64_t place = 0;    // in the file
  std::uint64_t content = 0;  // where what it holds begins in the whole content
  std::uint32_t packed = 0;   // bytes in the file, its checksum included
  std::uint32_t size = 0;     // bytes of content
  /// The low half of the content's XXH64, where the table tells it and the frame doesn't.
  std::optional<std::uint32_t> checksum{};

  std::uint64_t End() const { return content + size; }
};

/// Does the file begin as one of Zstandard does?
bool IsZstandard(const Source& source);

/// The frames by the seek table at the file's end (Zstandard's seekable format), each held against its own
/// header: content size stated, window and content of at most kLargestFrame, no dictionary. Refuses a table
/// that doesn't account for every byte before it, and a file without one.
Result<std::vector<Frame>> ReadFrames(const Source& source);

/// The content of the largest, in bytes.
std::uint32_t LargestOf(const std::vector<Frame>& frames);
/// The frame that holds the byte at `offset` of the content, which must lie in it.
std::size_t FrameAt(const std::vector<Frame>& frames, std::uint64_t offset);

}  // namespace archive
