// SPDX-License-Identifier: MIT
// Finds the true places of entries whose 32-bit fields wrapped.
#include "archive/reading/Wrapped.h"

#include "archive/reading/Peek.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

Status Unclear(const Entry& entry) {
  return Fail("the archive is larger than its records can tell, and the place of the entry ",
              Quoted(entry.name), " is not clear");
}

/// Whether the header of `entry` stands at `place`; if so, `data` is where the data begins.
bool HeaderStandsAt(Peek& peek, const Entry& entry, std::uint64_t place, std::uint64_t& data) {
  const std::size_t nameLength = entry.storedName.size();
  const char* p = peek.At(place, local::kLength + nameLength);
  if (p == nullptr || Load32(p) != local::kMark || Load16(p + local::kNameLength) != nameLength ||
      std::string_view(p + local::kLength, nameLength) != entry.storedName)
    return false;
  data = place + local::kLength + nameLength + Load16(p + local::kExtraLength);
  return true;
}

/// The packed length that fills the room up to the next header but for the record behind the data.
bool FitLength(Entry& entry, std::uint64_t room) {
  if (entry.compressed > room) return false;
  entry.compressed += (room - entry.compressed) / kWrap32 * kWrap32;
  if (!entry.Deflated()) entry.size = entry.compressed;
  return room - entry.compressed <= descriptor::kLongest;
}

}  // namespace

Status RecoverWrapped(const Source& source, std::vector<Entry>& entries, std::uint64_t limit,
                      const std::atomic<bool>* stop) {
  Peek peek(source);
  Entry* previous = nullptr;
  std::uint64_t previousData = 0;
  for (Entry& entry : entries) {
    const std::uint64_t from = previousData;
    std::uint64_t place = from - from % kWrap32 + entry.header;
    if (place < from) place += kWrap32;
    unsigned found = 0;
    for (; place < limit; place += kWrap32) {
      if (Stopped(stop)) return Interrupted();
      std::uint64_t data = 0;
      if (!HeaderStandsAt(peek, entry, place, data) || data > limit) continue;
      if (++found > 1) break;
      entry.header = place;
      previousData = data;
    }
    if (found != 1) return Unclear(entry);
    if (previous && !FitLength(*previous, entry.header - from)) return Unclear(*previous);
    previous = &entry;
  }
  if (previous && !FitLength(*previous, limit - previousData)) return Unclear(*previous);
  return {};
}

}  // namespace archive
