// SPDX-License-Identifier: MIT
// Decodes frames and writes the files that lie in them: what each thread of a solid archive's expansion does.
#pragma once

#include <cstdint>
#include <span>

#include "archive/reading/FrameDecoder.h"
#include "archive/writing/Crossing.h"
#include "archive/writing/FileMaker.h"
#include "archive/writing/Worker.h"

namespace archive {

class FrameWorker {
 public:
  /// `decoder` has room for every frame of the plan.
  FrameWorker(Work& work, FrameDecoder& decoder);
  /// Takes frames until none is left or somebody failed.
  void Run();

 private:
  Status Do(std::size_t frame);
  Status TakeHeader(const Frame& frame, std::uint32_t entry);
  Status TakeContent(std::size_t frame, std::uint32_t entry);
  Status WriteWhole(NodeId node, std::size_t start);
  Status WritePart(std::size_t frame, NodeId node);
  Status Stream(const Entry& entry, const Span& span, int file, std::uint32_t& crc);

  Work& fWork;
  FrameDecoder& fDecoder;
  FileMaker fFiles;
};

}  // namespace archive
