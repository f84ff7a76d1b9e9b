// SPDX-License-Identifier: MIT
// Decodes one frame after the other, each no further than is asked for.
#pragma once

#include <zstd.h>

#include <cstdint>
#include <memory>
#include <span>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/reading/Zstandard.h"

namespace archive {

/// One for each thread; holds `room` bytes for a frame's content. May throw std::bad_alloc.
class FrameDecoder {
 public:
  /// What one takes besides the room: the library's tables and the packed bytes.
  static constexpr std::size_t kOwnMemory = 1 << 20;
  FrameDecoder(const Source& source, std::size_t room);

  /// Begins with a frame, which must fit the room and stay as long as it is decoded.
  void Begin(const Frame& frame);
  /// Decodes until `length` bytes of the frame's content are there; with its last byte the frame's length and
  /// checksum are verified too. errno is EBADMSG where they are wrong.
  Status Need(std::size_t length);
  /// The content, valid up to what was needed.
  const unsigned char* Content() const { return fRoom.get(); }

 private:
  Status Damaged() const;
  Status Refill();
  Status Finish();

  struct Free {
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
  };
  const Source& fSource;
  const std::size_t fRoomSize;
  std::unique_ptr<ZSTD_DCtx, Free> fContext;
  std::unique_ptr<unsigned char[]> fRoom, fPacked;
  const Frame* fFrame = nullptr;
  ZSTD_inBuffer fIn{};
  ZSTD_outBuffer fOut{};
  std::uint64_t fNext = 0;  // of the packed bytes, in the file
  std::uint32_t fLeft = 0;  // of them, not read yet
  bool fFinished = false;
};

}  // namespace archive
