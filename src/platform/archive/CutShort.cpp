// SPDX-License-Identifier: MIT
// Walks from local header to local header.
#include "platform/archive/CutShort.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/archive/Extras.h"
#include "platform/archive/Peek.h"
#include "platform/archive/ZipFormat.h"

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
  header.streamed = (Load16(p + local::kFlags) & flag::kDescriptor) != 0;
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

}  // namespace

Status CutShort(const Source& source) {
  Peek peek(source);
  std::optional<Header> last;
  for (auto next = HeaderAt(peek, 0); next; next = HeaderAt(peek, last->end)) {
    last = std::move(next);
    if (last->streamed) return Fail("the archive is cut short in or after the entry ", Quoted(last->name));
    if (last->end > source.Size()) return Fail("the archive is cut short in the entry ", Quoted(last->name));
  }
  if (!last) return Fail("the file is no zip archive, or it is cut short: its end record is missing");
  return Fail("the archive is cut short after the entry ", Quoted(last->name));
}

}  // namespace archive
