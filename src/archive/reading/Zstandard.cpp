// SPDX-License-Identifier: MIT
#include "archive/reading/Zstandard.h"

#include <algorithm>
#include <array>
#include <string>

#include "archive/reading/Peek.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

constexpr std::uint32_t kFrameMark = 0xFD2FB528, kSkippedMark = 0x184D2A50, kSkippedMask = 0xFFFFFFF0;

namespace table {  // a frame to be skipped, with one row for each other frame and a footer
constexpr std::uint32_t kMark = 0x184D2A5E, kEndMark = 0x8F92EAB1;
constexpr std::size_t kHead = 8, kRow = 8, kChecksum = 4, kFooter = 9;
constexpr std::size_t kFlags = 4, kEnd = 5;  // in the footer, behind the number of frames
constexpr unsigned kHasChecksums = 0x80, kReserved = 0x7C;
/// 4 TiB of content in frames of 16 MiB; more would only take memory.
constexpr std::uint64_t kMostFrames = 1 << 18;
}  // namespace table

Status Damaged(std::string_view how) {
  return Fail("the archive's table of frames ", how);
}

Status BadFrame(std::size_t number, std::string_view how) {
  return Fail("the archive's frame ", std::to_string(number + 1), " ", how);
}

/// What a frame tells of itself before its data.
struct FrameHeader {
  std::optional<std::uint64_t> size{};
  std::uint64_t window = 0;
  bool checksum = false;
  bool dictionary = false;
  bool reserved = false;
};

constexpr std::size_t kMostHeader = 18;

std::uint64_t LoadField(const char* p, std::size_t bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = bytes; i-- > 0;) value = value << 8 | static_cast<unsigned char>(p[i]);
  return value;
}

/// `bytes` hold kMostHeader bytes, zeros behind the frame's end.
FrameHeader ParseHeader(const char* bytes) {
  constexpr std::array<std::size_t, 4> kIdBytes{0, 1, 2, 4};
  const auto flags = static_cast<unsigned char>(bytes[4]);
  const bool single = (flags & 0x20) != 0;
  const char* p = bytes + 5;
  FrameHeader header;
  header.reserved = (flags & 0x08) != 0;
  header.checksum = (flags & 0x04) != 0;
  if (!single) {
    const auto window = static_cast<unsigned char>(*p++);
    const std::uint64_t base = std::uint64_t{1} << (10 + (window >> 3));
    header.window = base + base / 8 * (window & 7);
  }
  const std::size_t idBytes = kIdBytes[flags & 3];
  header.dictionary = LoadField(p, idBytes) != 0;
  p += idBytes;
  const std::size_t sizeBytes = flags >> 6 == 0 ? (single ? 1 : 0) : std::size_t{1} << (flags >> 6);
  if (sizeBytes > 0) header.size = LoadField(p, sizeBytes) + (sizeBytes == 2 ? 256 : 0);
  if (single) header.window = header.size.value_or(0);
  return header;
}

class Reader {
 public:
  explicit Reader(const Source& source) : fSource(source), fPeek(source) {}

  Result<std::vector<Frame>> Read() {
    Status status = FindTable();
    if (status.Ok()) status = TakeRows();
    for (std::size_t i = 0; i < fFrames.size() && status.Ok(); ++i) status = CheckFrame(i);
    if (!status.Ok()) return status;
    return std::move(fFrames);
  }

 private:
  Status FindTable() {
    std::array<char, table::kFooter> footer{};
    const std::uint64_t size = fSource.Size();
    if (size < table::kHead + table::kFooter) return NoTable();
    if (!fSource.ReadAt(size - table::kFooter, footer.data(), footer.size()))
      return FailedCall("read the end of the archive");
    if (Load32(footer.data() + table::kEnd) != table::kEndMark) return NoTable();
    const auto flags = static_cast<unsigned char>(footer[table::kFlags]);
    if ((flags & table::kReserved) != 0) return Damaged("is of an unknown kind");
    fHasChecksums = (flags & table::kHasChecksums) != 0;
    fCount = Load32(footer.data());
    if (fCount == 0) return Damaged("is empty");
    if (fCount > table::kMostFrames) return Damaged("is too long");
    const std::uint64_t payload = fCount * RowLength() + table::kFooter;
    if (payload + table::kHead > size) return Damaged("is longer than the archive");
    fTable = size - payload - table::kHead;
    std::array<char, table::kHead> head{};
    if (!fSource.ReadAt(fTable, head.data(), head.size())) return FailedCall("read the end of the archive");
    if (Load32(head.data()) != table::kMark || Load32(head.data() + 4) != payload)
      return Damaged("is not where its end says");
    return {};
  }

  static Status NoTable() {
    return Fail(
        "the file is packed by Zstandard, but is no archive, or it is cut short: it has no table of its "
        "frames");
  }

  std::size_t RowLength() const { return table::kRow + (fHasChecksums ? table::kChecksum : 0); }

  Status TakeRows() {
    std::string rows(fCount * RowLength(), '\0');
    if (!fSource.ReadAt(fTable + table::kHead, rows.data(), rows.size()))
      return FailedCall("read the archive's table of frames");
    fFrames.reserve(fCount);
    Frame frame;
    for (const char* p = rows.data(); p < rows.data() + rows.size(); p += RowLength()) {
      frame.packed = Load32(p);
      frame.size = Load32(p + 4);
      if (fHasChecksums) frame.checksum = Load32(p + table::kRow);
      if (frame.size == 0 || frame.packed == 0) return BadFrame(fFrames.size(), "is empty");
      if (frame.size > kLargestFrame) return BadFrame(fFrames.size(), "holds more than 16 MiB");
      if (frame.packed > fTable - frame.place) return Damaged("tells of more than the archive holds");
      fFrames.push_back(frame);
      frame.place += frame.packed;
      frame.content += frame.size;
    }
    return frame.place == fTable ? Status() : Damaged("leaves bytes out");
  }

  Status CheckFrame(std::size_t number) {
    constexpr std::size_t kLeast = 9;  // mark, flags, size and the shortest block
    Frame& frame = fFrames[number];
    std::array<char, kMostHeader> bytes{};
    const std::size_t length = std::min<std::size_t>(bytes.size(), frame.packed);
    const char* p = fPeek.At(frame.place, length);
    if (p == nullptr) return FailedCall("read the archive");
    std::copy_n(p, length, bytes.data());
    if (frame.packed < kLeast || Load32(bytes.data()) != kFrameMark)
      return BadFrame(number, "is not where the table says");
    const FrameHeader header = ParseHeader(bytes.data());
    if (header.reserved) return BadFrame(number, "is of an unknown kind");
    if (header.dictionary) return BadFrame(number, "needs a dictionary");
    if (!header.size) return BadFrame(number, "doesn't state its size");
    if (header.window > kLargestFrame) return BadFrame(number, "needs more than 16 MiB of memory");
    if (*header.size != frame.size) return BadFrame(number, "states another size than the table");
    return header.checksum && frame.checksum ? CompareChecksum(number) : Status();
  }

  /// The frame's own is compared with its content when that is decoded.
  Status CompareChecksum(std::size_t number) {
    Frame& frame = fFrames[number];
    std::array<char, table::kChecksum> own{};
    if (!fSource.ReadAt(frame.place + frame.packed - own.size(), own.data(), own.size()))
      return FailedCall("read the archive");
    if (Load32(own.data()) != *frame.checksum) return BadFrame(number, "has another checksum than the table");
    frame.checksum.reset();
    return {};
  }

  const Source& fSource;
  Peek fPeek;
  std::uint64_t fTable = 0;  // where it begins
  std::uint64_t fCount = 0;
  bool fHasChecksums = false;
  std::vector<Frame> fFrames;
};

}  // namespace

bool IsZstandard(const Source& source) {
  std::array<char, 4> mark{};
  if (source.Size() < mark.size() || !source.ReadAt(0, mark.data(), mark.size())) return false;
  const std::uint32_t value = Load32(mark.data());
  return value == kFrameMark || (value & kSkippedMask) == kSkippedMark;
}

Result<std::vector<Frame>> ReadFrames(const Source& source) {
  return Reader(source).Read();
}

std::uint32_t LargestOf(const std::vector<Frame>& frames) {
  return std::max_element(frames.begin(), frames.end(),
                          [](const Frame& a, const Frame& b) { return a.size < b.size; })
      ->size;
}

std::size_t FrameAt(const std::vector<Frame>& frames, std::uint64_t offset) {
  const auto after = std::upper_bound(frames.begin(), frames.end(), offset,
                                      [](std::uint64_t place, const Frame& f) { return place < f.content; });
  return static_cast<std::size_t>(after - frames.begin()) - 1;
}

}  // namespace archive
