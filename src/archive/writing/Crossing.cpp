// SPDX-License-Identifier: MIT
#include "archive/writing/Crossing.h"

#include <zlib.h>

#include <algorithm>

#include "archive/reading/FrameSource.h"

namespace archive {

Span SpanOf(const Frame& frame, std::uint64_t begin, std::uint64_t end) {
  const std::uint64_t from = std::max(begin, frame.content), to = std::min(end, frame.End());
  if (from >= to) return {};
  return {static_cast<std::size_t>(from - frame.content), from - begin, static_cast<std::size_t>(to - from)};
}

std::string CrossingHeaders::Add(std::uint32_t entry, std::size_t length, std::size_t at,
                                 std::string_view part) {
  const std::lock_guard lock(fMutex);
  Header& header = fHeaders[entry];
  if (header.bytes.empty()) {
    header.bytes.resize(length);
    header.missing = length;
  }
  part.copy(header.bytes.data() + at, part.size());
  header.missing -= part.size();
  if (header.missing > 0) return {};
  std::string whole = std::move(header.bytes);
  fHeaders.erase(entry);
  return whole;
}

CrossingFile::CrossingFile(const std::vector<Frame>& frames, const Entry& entry)
    : fFrames(frames),
      fBegin(entry.data),
      fEnd(entry.data + entry.size),
      fFirst(FrameAt(frames, fBegin)),
      fCrcs(FrameAt(frames, fEnd - 1) - fFirst + 1),
      fMissing(fCrcs.size()) {}

int CrossingFile::Open(const Create& create, Status& status) {
  const std::lock_guard lock(fMutex);
  if (!fFile) {
    Result<Descriptor> created = create();
    if (created.Ok())
      fFile = std::move(*created);
    else
      status = created.Failure();
  }
  return fFile.Get();
}

bool CrossingFile::Add(std::size_t frame, std::uint32_t crc) {
  const std::lock_guard lock(fMutex);
  fCrcs[frame - fFirst] = crc;
  return --fMissing == 0;
}

std::uint32_t CrossingFile::Crc() const {
  uLong crc = 0;
  for (std::size_t i = 0; i < fCrcs.size(); ++i)
    crc =
        crc32_combine(crc, fCrcs[i], static_cast<z_off_t>(SpanOf(fFrames[fFirst + i], fBegin, fEnd).length));
  return static_cast<std::uint32_t>(crc);
}

std::shared_ptr<CrossingFile> CrossingFiles::Of(const std::vector<Frame>& frames, const Entry& entry) {
  const std::lock_guard lock(fMutex);
  std::shared_ptr<CrossingFile>& file = fFiles[&entry];
  if (!file) file = std::make_shared<CrossingFile>(frames, entry);
  return file;
}

void CrossingFiles::Forget(const Entry& entry) {
  const std::lock_guard lock(fMutex);
  fFiles.erase(&entry);
}

}  // namespace archive
