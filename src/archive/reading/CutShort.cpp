// SPDX-License-Identifier: MIT
// Walks from local header to local header.
#include "archive/reading/CutShort.h"

#include <algorithm>
#include <optional>
#include <string>

#include "archive/reading/Extras.h"
#include "archive/reading/Peek.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

struct Header {
  std::string name;
  std::uint64_t end = 0;  // of the entry's data, as far as the header knows
  bool streamed = false;  // the length stands behind the data
};

std::optional<Header> HeaderAt(Peek& peek, std::uint64_t place) {
  const char* p = peek.At(place, local::kLength);
  if (p == nullptr || Load32(p) != local::kMark) return std::nullopt;
  const std::size_t nameLength = Load16(p + local::kNameLength),
                    extraLength = Load16(p + local::kExtraLength);
  std::uint64_t compressed = Load32(p + local::kCompressed), size = Load32(p + local::kSize);
  Header header;
  header.streamed = (Load16(p + local::kFlags) & flag::kDescriptor) != 0 && compressed == 0;
  header.end = place + local::kLength + nameLength + extraLength;
  p = peek.At(place, local::kLength + nameLength + extraLength);
  if (p == nullptr) return std::nullopt;
  header.name.assign(p + local::kLength, nameLength);
  if (compressed == kIn64Of32) {
    Zip64Values values(ReadExtras({p + local::kLength + nameLength, extraLength}).value_or(Extras{}));
    if (!values.Take(size) || !values.Take(compressed)) return std::nullopt;
  }
  if (__builtin_add_overflow(header.end, compressed, &header.end)) return std::nullopt;
  return header;
}

/// Where an entry ends whose data begin at `data` and whose length stands behind them: behind a record with
/// its mark that tells the length up to itself, and before another header.
std::optional<std::uint64_t> EndOfStreamed(const Source& source, std::uint64_t data) {
  constexpr std::size_t kWindow = 64 << 10, kRecordAndMark = descriptor::kLongest + 4;
  std::string window;
  for (std::uint64_t start = data; start < source.Size(); start += kWindow) {
    window.resize(std::min<std::uint64_t>(kWindow + kRecordAndMark, source.Size() - start));
    if (!source.ReadAt(start, window.data(), window.size())) return std::nullopt;
    window.resize(kWindow + kRecordAndMark);  // zeros behind the end
    for (std::size_t at = window.find("PK\7\10"); at < kWindow; at = window.find("PK\7\10", at + 1)) {
      const char* p = window.data() + at;
      const std::uint64_t length = start + at - data;
      const auto endsWith = [&](std::size_t record) {
        const std::uint32_t mark = Load32(p + record);
        return mark == local::kMark || mark == central::kMark;
      };
      if (Load32(p + 8) == length % kWrap32 && endsWith(16)) return start + at + 16;
      if (Load64(p + 8) == length && endsWith(24)) return start + at + 24;
    }
  }
  return std::nullopt;
}

}  // namespace

Status CutShort(const Source& source) {
  if (!source.IsCheap()) return Fail("the archive is cut short: its end record is missing");
  Peek peek(source);
  std::optional<Header> last;
  for (auto next = HeaderAt(peek, 0); next; next = HeaderAt(peek, last->end)) {
    last = std::move(next);
    if (last->streamed) last->end = EndOfStreamed(source, last->end).value_or(source.Size() + 1);
    if (last->end > source.Size()) return Fail("the archive is cut short in the entry ", Quoted(last->name));
  }
  if (!last) return Fail("the file is no zip archive, or it is cut short: its end record is missing");
  const char* p = peek.At(last->end, sizeof central::kMark);
  if (p != nullptr && Load32(p) == central::kMark)
    return Fail("the archive's end record is missing: after the entry ", Quoted(last->name),
                " it is cut short, or bytes stand behind it");
  return Fail("the archive is cut short after the entry ", Quoted(last->name));
}

}  // namespace archive
