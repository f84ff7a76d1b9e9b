// SPDX-License-Identifier: MIT
#include "archive/writing/FrameWorker.h"

#include <unistd.h>

#include <algorithm>
#include <new>

#include "archive/reading/Inflate.h"
#include "archive/reading/LocalHeaders.h"
#include "base/WriteAll.h"

namespace archive {

FrameWorker::FrameWorker(Work& work, FrameDecoder& decoder)
    : fWork(work), fDecoder(decoder), fFiles(work.plan, work.root, work.descriptors, work.made) {}

void FrameWorker::Run() try {
  const std::size_t frames = fWork.plan.solid.frames.size();
  while (!fWork.stop) {
    const std::size_t frame = fWork.nextFrame++;
    if (frame >= frames) return;
    Status status = Do(frame);
    if (!status.Ok()) fWork.Fail(std::move(status));
  }
} catch (const std::bad_alloc&) {
  fWork.Fail(Fail("there is not enough memory"));
}

/// What lies behind the last entry is the directory, which the plan has read; its frames are decoded to the
/// end all the same, for their checksums.
Status FrameWorker::Do(std::size_t number) {
  const SolidPlan& solid = fWork.plan.solid;
  const std::vector<Entry>& entries = fWork.plan.directory.entries;
  const Frame& frame = solid.frames[number];
  fDecoder.Begin(frame);
  auto next =
      std::upper_bound(solid.order.begin(), solid.order.end(), frame.content,
                       [&](std::uint64_t place, std::uint32_t e) { return place < entries[e].header; });
  if (next != solid.order.begin()) --next;  // it begins before the frame
  for (; next != solid.order.end() && entries[*next].header < frame.End() && !fWork.stop; ++next) {
    Status status = TakeHeader(frame, *next);
    if (status.Ok()) status = TakeContent(number, *next);
    if (!status.Ok()) return status;
  }
  return fWork.stop ? Status() : fDecoder.Need(frame.size);
}

Status FrameWorker::TakeHeader(const Frame& frame, std::uint32_t number) {
  const Entry& entry = fWork.plan.directory.entries[number];
  const Span span = SpanOf(frame, entry.header, entry.data);
  if (span.length == 0) return {};
  Status status = fDecoder.Need(span.inFrame + span.length);
  if (!status.Ok()) return status;
  const auto length = static_cast<std::size_t>(entry.data - entry.header);
  const std::string_view part(reinterpret_cast<const char*>(fDecoder.Content()) + span.inFrame, span.length);
  if (span.length == length) return CompareLocalHeader(part, entry);
  const std::string whole = fWork.crossingHeaders.Add(number, length, span.inRange, part);
  return whole.empty() ? Status() : CompareLocalHeader(whole, entry);
}

Status FrameWorker::TakeContent(std::size_t number, std::uint32_t entryNumber) {
  const Entry& entry = fWork.plan.directory.entries[entryNumber];
  const NodeId node = fWork.plan.solid.nodes[entryNumber];
  if (node == kNoNode) return {};  // a folder, a link that the plan has read, or what is left out
  const Frame& frame = fWork.plan.solid.frames[number];
  const Span span = SpanOf(frame, entry.data, entry.data + entry.size);
  if (span.length > 0 && span.length < entry.size) return WritePart(number, node);
  // An empty one is of the frame that its header ends in.
  const bool emptyHere = entry.size == 0 && entry.data > frame.content && entry.data <= frame.End();
  if (span.length == 0 && !emptyHere) return {};
  return WriteWhole(node, static_cast<std::size_t>(entry.data - frame.content));
}

Status FrameWorker::Stream(const Entry& entry, const Span& span, int file, std::uint32_t& crc) {
  for (std::size_t done = 0; done < span.length;) {
    if (fWork.stop) return Interrupted();
    const std::size_t length = std::min(span.length - done, kPiece);
    Status status = fDecoder.Need(span.inFrame + done + length);
    if (!status.Ok()) return status;
    const unsigned char* piece = fDecoder.Content() + span.inFrame + done;
    crc = Crc32(crc, {piece, length});
    if (!fWork.OnlyChecks() && !WriteAllAt(file, piece, length, span.inRange + done))
      return FailedCall("write", entry.name);
    fWork.written.fetch_add(length, std::memory_order_relaxed);
    done += length;
  }
  return {};
}

Status FrameWorker::WriteWhole(NodeId node, std::size_t start) {
  const Entry& entry = fWork.plan.EntryOf(node);
  Result<Descriptor> file = fWork.OnlyChecks() ? Result<Descriptor>(Descriptor()) : fFiles.Create(node);
  if (!file.Ok()) return file.Failure();
  std::uint32_t crc = 0;
  Status status = Stream(entry, {start, 0, static_cast<std::size_t>(entry.size)}, file->Get(), crc);
  if (!status.Ok()) return status;
  if (crc != entry.crc) return WrongChecksum(entry);
  return fWork.OnlyChecks() ? Status() : FileMaker::Complete(std::move(*file), entry);
}

Status FrameWorker::WritePart(std::size_t number, NodeId node) {
  const Entry& entry = fWork.plan.EntryOf(node);
  const std::vector<Frame>& frames = fWork.plan.solid.frames;
  const auto file = fWork.crossingFiles.Of(frames, entry);
  Status status;
  const int descriptor =
      fWork.OnlyChecks() ? Work::kNowhere : file->Open([&] { return fFiles.Create(node); }, status);
  if (!status.Ok()) return status;
  std::uint32_t crc = 0;
  const Span span = SpanOf(frames[number], entry.data, entry.data + entry.size);
  status = Stream(entry, span, descriptor, crc);
  if (!status.Ok() || !file->Add(number, crc)) return status;
  fWork.crossingFiles.Forget(entry);
  if (file->Crc() != entry.crc) return WrongChecksum(entry);
  return fWork.OnlyChecks() ? Status() : FileMaker::Complete(file->Take(), entry);
}

}  // namespace archive
