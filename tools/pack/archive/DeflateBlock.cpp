// SPDX-License-Identifier: MIT
// Blocks through zlib.
#include "pack/archive/DeflateBlock.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace pack {
namespace {

int Number(Level level) {
  switch (level) {
    case Level::kFast:
      return 1;
    case Level::kNormal:
      return 6;
    case Level::kBest:
      break;
  }
  return 9;
}

// The library doesn't write what it reads, but its interface says so.
Bytef* Bytes(const char* from) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(from));
}

}  // namespace

Deflater::Deflater(Level level) {
  constexpr int kWithoutHeader = -15, kMostMemory = 9;
  if (deflateInit2(&fStream, Number(level), Z_DEFLATED, kWithoutHeader, kMostMemory, Z_DEFAULT_STRATEGY) !=
      Z_OK)
    throw std::bad_alloc();
}

Deflater::~Deflater() {
  deflateEnd(&fStream);
}

std::string Deflater::Deflate(const std::string& text, std::size_t begin, bool last) {
  constexpr std::size_t kFlushMark = 16;  // more than what ends a block at a full byte
  const std::size_t dictionary = std::min(begin, kDeflateWindow);
  bool fine = deflateReset(&fStream) == Z_OK;
  if (dictionary > 0)
    fine = fine && deflateSetDictionary(&fStream, Bytes(text.data() + begin - dictionary),
                                        static_cast<uInt>(dictionary)) == Z_OK;
  const std::size_t size = text.size() - begin;
  std::string out(deflateBound(&fStream, size) + kFlushMark, '\0');
  fStream.next_in = Bytes(text.data() + begin);
  fStream.avail_in = static_cast<uInt>(size);
  fStream.next_out = Bytes(out.data());
  fStream.avail_out = static_cast<uInt>(out.size());
  const int done = fine ? deflate(&fStream, last ? Z_FINISH : Z_SYNC_FLUSH) : Z_STREAM_ERROR;
  if (done != (last ? Z_STREAM_END : Z_OK) || fStream.avail_in != 0 || fStream.avail_out == 0)
    throw std::runtime_error("Deflating failed");
  out.resize(out.size() - fStream.avail_out);
  return out;
}

}  // namespace pack
