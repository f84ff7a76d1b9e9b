// SPDX-License-Identifier: MIT
#include "archive/reading/FrameDecoder.h"

// The parameter that has a frame decoded into the caller's room alone is declared with the unstable ones.
#define ZSTD_STATIC_LINKING_ONLY
#ifndef __clang_analyzer__  // which would judge the header, not its use
#define XXH_INLINE_ALL
#endif
#include <xxhash.h>
#include <zstd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string>

namespace archive {
namespace {

/// What one call takes in: its content is still in the core's cache when it is written.
constexpr std::size_t kInput = 64 << 10;

}  // namespace

FrameDecoder::FrameDecoder(const Source& source, std::size_t room)
    : fSource(source),
      fRoomSize(room),
      fContext(ZSTD_createDCtx()),
      fRoom(std::make_unique_for_overwrite<unsigned char[]>(room)),
      fPacked(std::make_unique_for_overwrite<unsigned char[]>(kInput)) {
  if (!fContext) throw std::bad_alloc();
  // Where the library knows no such parameter it decodes by a window of its own, with more memory.
  static_cast<void>(ZSTD_DCtx_setParameter(fContext.get(), ZSTD_d_stableOutBuffer, 1));
  constexpr int kWindowLog = 24;
  static_assert(1 << kWindowLog == kLargestFrame);
  static_cast<void>(ZSTD_DCtx_setParameter(fContext.get(), ZSTD_d_windowLogMax, kWindowLog));
}

void FrameDecoder::Begin(const Frame& frame) {
  ZSTD_DCtx_reset(fContext.get(), ZSTD_reset_session_only);
  fFrame = &frame;
  fIn = {fPacked.get(), 0, 0};
  fOut = {fRoom.get(), std::min<std::size_t>(frame.size, fRoomSize), 0};
  fNext = frame.place;
  fLeft = frame.packed;
  fFinished = false;
}

Status FrameDecoder::Damaged() const {
  errno = EBADMSG;
  return Fail("the archive is damaged: what is packed at byte ", std::to_string(fFrame->place),
              " can't be unpacked");
}

Status FrameDecoder::Refill() {
  const std::size_t length = std::min<std::size_t>(fLeft, kInput);
  if (!fSource.ReadAt(fNext, fPacked.get(), length)) return FailedCall("read the archive");
  fNext += length;
  fLeft -= static_cast<std::uint32_t>(length);
  fIn = {fPacked.get(), length, 0};
  return {};
}

Status FrameDecoder::Need(std::size_t length) {
  // The end of the frame comes with its last byte: there, the checksum is yet to be read.
  while (fOut.pos < length || (fOut.pos == fFrame->size && !fFinished)) {
    if (fFinished) return Damaged();  // it holds less than it states
    if (fIn.pos == fIn.size) {
      if (fLeft == 0) return Damaged();
      Status status = Refill();
      if (!status.Ok()) return status;
    }
    const std::size_t result = ZSTD_decompressStream(fContext.get(), &fOut, &fIn);
    if (ZSTD_isError(result)) return Damaged();
    if (result == 0) {
      Status status = Finish();
      if (!status.Ok()) return status;
    }
  }
  return {};
}

Status FrameDecoder::Finish() {
  fFinished = true;
  // Bytes behind its end are somebody's who hides them.
  if (fLeft != 0 || fIn.pos != fIn.size || fOut.pos != fFrame->size) return Damaged();
  if (!fFrame->checksum) return {};
  const auto sum = static_cast<std::uint32_t>(XXH64(fRoom.get(), fOut.pos, 0));
  return sum == *fFrame->checksum ? Status() : Damaged();
}

}  // namespace archive
