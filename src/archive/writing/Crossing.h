// SPDX-License-Identifier: MIT
// What lies across the border of two frames, and so in the hands of several threads.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "archive/Result.h"
#include "archive/planning/Plan.h"
#include "archive/reading/Zstandard.h"
#include "base/Descriptor.h"

namespace archive {

/// A range of the content that a frame holds a part of: the part's place in the frame and in the range.
struct Span {
  std::size_t inFrame = 0;
  std::uint64_t inRange = 0;
  std::size_t length = 0;
};
Span SpanOf(const Frame& frame, std::uint64_t begin, std::uint64_t end);

/// Local headers whose bytes come from more than one frame.
class CrossingHeaders {
 public:
  /// Adds a part. The whole header with the part that completes it; empty before.
  std::string Add(std::uint32_t entry, std::size_t length, std::size_t at, std::string_view part);

 private:
  struct Header {
    std::string bytes;
    std::size_t missing = 0;
  };
  std::mutex fMutex;
  std::map<std::uint32_t, Header> fHeaders;
};

/// A file that its threads write in parts, each at its place.
class CrossingFile {
 public:
  CrossingFile(const std::vector<Frame>& frames, const Entry& entry);

  using Create = std::function<Result<Descriptor>()>;
  /// The file, created by whoever comes first; -1 with the failure.
  int Open(const Create& create, Status& status);
  /// A part is written. True for the last one of all.
  bool Add(std::size_t frame, std::uint32_t crc);
  /// Of all parts, once the last is there: by their own checksums and lengths.
  std::uint32_t Crc() const;
  Descriptor Take() { return std::move(fFile); }

 private:
  const std::vector<Frame>& fFrames;
  const std::uint64_t fBegin, fEnd;
  const std::size_t fFirst;
  std::mutex fMutex;
  Descriptor fFile;
  std::vector<std::uint32_t> fCrcs;
  std::size_t fMissing;
};

/// The files at which somebody is.
class CrossingFiles {
 public:
  std::shared_ptr<CrossingFile> Of(const std::vector<Frame>& frames, const Entry& entry);
  void Forget(const Entry& entry);

 private:
  std::mutex fMutex;
  std::map<const Entry*, std::shared_ptr<CrossingFile>> fFiles;
};

}  // namespace archive
