// SPDX-License-Identifier: MIT
// Packs bytes into frames with a seek table, true or false. Shares nothing with the reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ziptest {

struct FrameRow {
  std::uint32_t packed = 0, size = 0, checksum = 0;
};

/// What a file of frames is made of. The builder fills it in truly; a case then changes what it likes.
struct Frames {
  std::vector<std::string> packed;
  std::vector<FrameRow> rows;
  std::uint32_t count = 0, mark = 0x184D2A5E, endMark = 0x8F92EAB1, tableLonger = 0;
  std::uint8_t flags = 0x80;
  std::string before, behind;  // of the table
};

/// How one frame is packed.
struct FrameStyle {
  bool checksum = true, size = true, dictionary = false;
  int window = 0;  // its logarithm, if not the library's choice
};
std::string PackFrame(const std::string& content, const FrameStyle& style = {});

/// `content` in frames of `length` bytes.
std::string Solid(const std::string& content, std::size_t length,
                  const std::function<void(Frames&)>& change = {});

}  // namespace ziptest
