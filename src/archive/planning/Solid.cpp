// SPDX-License-Identifier: MIT
#include "archive/planning/Solid.h"

#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

Status PlaceEntry(Entry& entry, std::uint64_t next) {
  constexpr std::size_t kMostExtra = 0xFFFF;
  if (entry.Deflated()) return Fail("the entry ", Quoted(entry.name), " is packed twice");
  if ((entry.flags & flag::kDescriptor) != 0)
    return Fail("the entry ", Quoted(entry.name), " is completed behind its data");
  const std::uint64_t header = local::kLength + entry.storedName.size();
  const std::uint64_t room = next - entry.header;
  if (room < header || entry.compressed > room - header)
    return Fail("the entry ", Quoted(entry.name), " overlaps with another one or with the directory");
  entry.data = next - entry.compressed;
  if (entry.data - entry.header - header > kMostExtra)
    return Fail("the archive has a gap after the entry ", Quoted(entry.name));
  return {};
}

}  // namespace

Status PlaceEntries(const DirectoryPlace& place, const std::vector<std::uint32_t>& order,
                    std::vector<Entry>& entries) {
  const bool starts = order.empty() ? place.start == 0 : entries[order.front()].header == 0;
  if (place.shift != 0 || place.wrapped || !starts)
    return Fail("the archive does not begin with its first entry");
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::uint64_t next = i + 1 < order.size() ? entries[order[i + 1]].header : place.start;
    Status status = PlaceEntry(entries[order[i]], next);
    if (!status.Ok()) return status;
  }
  return {};
}

}  // namespace archive
