// SPDX-License-Identifier: MIT
#include "archive/reading/FrameSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace archive {
FrameSource::FrameSource(const Source& file, const std::vector<Frame>& frames, const std::atomic<bool>* stop)
    : Source(frames.back().End()),
      fFrames(frames),
      fStop(stop),
      fDecoder(file, LargestOf(frames)),
      fLoaded(frames.size()) {}

bool FrameSource::Load(std::size_t frame) const {
  if (Stopped(fStop)) {
    errno = ECANCELED;
    return false;
  }
  if (frame != fLoaded) fDecoder.Begin(fFrames[frame]);
  fLoaded = frame;
  if (fDecoder.Need(fFrames[frame].size).Ok()) return true;
  fLoaded = fFrames.size();
  return false;
}

bool FrameSource::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  const std::lock_guard lock(fMutex);
  errno = 0;
  if (offset > Size() || length > Size() - offset) return false;
  char* at = static_cast<char*>(to);
  for (std::size_t frame = length > 0 ? FrameAt(fFrames, offset) : 0; length > 0; ++frame) {
    if (!Load(frame)) return false;
    const auto skipped = static_cast<std::size_t>(offset - fFrames[frame].content);
    const std::size_t part = std::min<std::size_t>(length, fFrames[frame].size - skipped);
    std::memcpy(at, fDecoder.Content() + skipped, part);
    at += part;
    offset += part;
    length -= part;
  }
  return true;
}

}  // namespace archive
