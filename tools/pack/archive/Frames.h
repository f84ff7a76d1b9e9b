// SPDX-License-Identifier: MIT
// A stream that is compressed in independent frames, by all cores, with a table at its end that tells where
// each frame lies: the seekable format of Zstandard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pack/archive/Crew.h"
#include "pack/archive/OutputFile.h"

namespace pack {

class FrameStream {
 public:
  /// Frames hold `frameSize` bytes of content at most, 16 MiB or fewer.
  FrameStream(OutputFile& out, std::size_t frameSize, std::size_t workers);

  /// Bytes of content so far.
  std::uint64_t Size() const { return fSize; }
  /// How many bytes more the frame takes that is being filled.
  std::size_t Room() const { return fFrameSize - fFrame.content.size(); }
  void Append(std::string_view bytes);
  /// Replaces the last bytes that were appended, as long as they are in the frame that is being filled.
  void Overwrite(std::size_t back, std::string_view bytes);
  /// Ends the frame that is being filled. Those that follow are compressed at `level`.
  void Cut(int level);
  /// The last frame, and the table.
  void Finish();

 private:
  struct Frame {
    std::string content;
    int level = 1;
  };
  struct Packed {
    std::string bytes;
    std::size_t contentSize = 0;
  };
  struct Nothing {};

  void Hand();
  void Write(const Packed& packed);
  static Packed Compress(const Frame& frame);

  OutputFile& fOut;
  const std::size_t fFrameSize;
  std::uint64_t fSize = 0;
  Frame fFrame;
  std::string fTable;
  std::uint32_t fFrames = 0;
  Crew<Nothing, Frame, Packed> fCrew;
};

}  // namespace pack
