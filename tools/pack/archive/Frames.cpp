// SPDX-License-Identifier: MIT
// Frames through libzstd; the table is written here.
#include "pack/archive/Frames.h"

#include <zstd.h>

#include <algorithm>
#include <bit>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "pack/archive/LittleEndian.h"

namespace pack {
namespace {

constexpr std::size_t kChecksumSize = 4;

void Set(ZSTD_CCtx* context, ZSTD_cParameter parameter, int value) {
  if (ZSTD_isError(ZSTD_CCtx_setParameter(context, parameter, value)))
    throw std::logic_error("The compression refuses a setting.");
}

}  // namespace

FrameStream::FrameStream(OutputFile& out, std::size_t frameSize, std::size_t workers)
    : fOut(out),
      fFrameSize(frameSize),
      fCrew(
          workers, workers + 1, std::make_unique<Nothing>,
          [](Nothing&, const Frame& frame) { return Compress(frame); },
          [this](const Packed& packed) { Write(packed); }) {}

void FrameStream::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    if (Room() == 0) Hand();
    if (fFrame.content.empty()) fFrame.content.reserve(fFrameSize);
    const std::string_view part = bytes.substr(0, Room());
    fFrame.content += part;
    fSize += part.size();
    bytes.remove_prefix(part.size());
  }
}

void FrameStream::Overwrite(std::size_t back, std::string_view bytes) {
  fFrame.content.replace(fFrame.content.size() - back, bytes.size(), bytes);
}

void FrameStream::Cut(int level) {
  if (!fFrame.content.empty()) Hand();
  fFrame.level = level;
}

void FrameStream::Finish() {
  constexpr std::uint32_t kSkippable = 0x184D2A5E, kSeekable = 0x8F92EAB1;
  constexpr unsigned kFooterSize = 9, kWithChecksums = 0x80;
  if (!fFrame.content.empty()) Hand();
  fCrew.Finish();
  std::string table;
  PutLittle(table, kSkippable, 4);
  PutLittle(table, fTable.size() + kFooterSize, 4);
  table += fTable;
  PutLittle(table, fFrames, 4);
  PutLittle(table, kWithChecksums, 1);
  PutLittle(table, kSeekable, 4);
  fOut.Append(table);
}

void FrameStream::Hand() {
  Frame next{{}, fFrame.level};
  fCrew.Put(std::exchange(fFrame, std::move(next)));
}

void FrameStream::Write(const Packed& packed) {
  PutLittle(fTable, packed.bytes.size(), 4);
  PutLittle(fTable, packed.contentSize, 4);
  // A frame ends with its content's checksum, which is the one that the table wants.
  fTable += packed.bytes.substr(packed.bytes.size() - kChecksumSize);
  ++fFrames;
  fOut.Append(packed.bytes);
}

// Each frame gets a context of its own: what an earlier frame left in one could show in the bytes.
FrameStream::Packed FrameStream::Compress(const Frame& frame) {
  const std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> context(ZSTD_createCCtx(), ZSTD_freeCCtx);
  if (!context) throw std::bad_alloc();
  const std::string& content = frame.content;
  // The window spans the frame, so that a match is found from any distance in it.
  constexpr int kSmallestWindow = 10;
  const int window = std::max(static_cast<int>(std::bit_width(content.size() - 1)), kSmallestWindow);
  Set(context.get(), ZSTD_c_compressionLevel, frame.level);
  Set(context.get(), ZSTD_c_windowLog, window);
  Set(context.get(), ZSTD_c_contentSizeFlag, 1);
  Set(context.get(), ZSTD_c_checksumFlag, 1);
  Packed packed{std::string(ZSTD_compressBound(content.size()), '\0'), content.size()};
  const std::size_t size =
      ZSTD_compress2(context.get(), packed.bytes.data(), packed.bytes.size(), content.data(), content.size());
  if (ZSTD_isError(size))
    throw std::runtime_error(std::string("Compressing failed: ") + ZSTD_getErrorName(size));
  packed.bytes.resize(size);
  packed.bytes.shrink_to_fit();
  return packed;
}

}  // namespace pack
