// SPDX-License-Identifier: MIT
// Deflating in blocks that don't wait for each other.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "pack/archive/Compression.h"

namespace pack {

/// How far deflate looks back.
constexpr std::size_t kDeflateWindow = 32 * 1024;

/// Blocks of one file give one stream when they stand one behind the other.
class Deflater {
 public:
  explicit Deflater(Level level);
  ~Deflater();
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  /// The bytes of `text` from `begin` on, what is before them being what the reader has by then. The `last`
  /// block ends the stream, the others end at a full byte.
  std::string Deflate(const std::string& text, std::size_t begin, bool last);

 private:
  z_stream fStream{};
};

}  // namespace pack
