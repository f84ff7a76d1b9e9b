// SPDX-License-Identifier: MIT
// What frames hold, read like a file: only those that are asked for are decoded.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "archive/Source.h"
#include "archive/reading/FrameDecoder.h"
#include "archive/reading/Zstandard.h"

namespace archive {

/// Keeps the frame read last, for those who read on behind it. Both arguments must stay as long as this.
class FrameSource : public Source {
 public:
  FrameSource(const Source& file, const std::vector<Frame>& frames);
  /// A frame that can't be decoded is a failure with EBADMSG.
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;

 private:
  bool Load(std::size_t frame) const;

  const std::vector<Frame>& fFrames;
  mutable std::mutex fMutex;
  mutable FrameDecoder fDecoder;
  mutable std::size_t fLoaded;
};

/// The content of the largest, in bytes.
std::uint32_t LargestOf(const std::vector<Frame>& frames);

/// The frame that holds the byte at `offset` of the content, which must lie in it.
std::size_t FrameAt(const std::vector<Frame>& frames, std::uint64_t offset);

}  // namespace archive
