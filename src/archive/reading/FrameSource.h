// SPDX-License-Identifier: MIT
// What frames hold, read like a file: only those that are asked for are decoded.
#pragma once

#include <atomic>
#include <mutex>
#include <vector>

#include "archive/Source.h"
#include "archive/reading/FrameDecoder.h"
#include "archive/reading/Zstandard.h"

namespace archive {

/// Keeps the frame read last, for those who read on behind it. The arguments must stay as long as this.
class FrameSource : public Source {
 public:
  FrameSource(const Source& file, const std::vector<Frame>& frames, const std::atomic<bool>* stop = nullptr);
  /// A few bytes of a file can unpack to gigabytes.
  bool IsCheap() const override { return false; }
  /// A frame that can't be decoded is a failure with EBADMSG; one that `stop` came before, with ECANCELED.
  bool ReadAt(std::uint64_t offset, void* to, std::size_t length) const override;

 private:
  bool Load(std::size_t frame) const;

  const std::vector<Frame>& fFrames;
  const std::atomic<bool>* const fStop;
  mutable std::mutex fMutex;
  mutable FrameDecoder fDecoder;
  mutable std::size_t fLoaded;
};

}  // namespace archive
