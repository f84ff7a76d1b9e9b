// SPDX-License-Identifier: MIT
// The end record, its zip64 twin, and the directory's place that both must agree on.
#include "archive/reading/EndRecord.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "archive/reading/CutShort.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

/// The fields of an end record; `place` is the record's own offset in the file.
struct EndFields {
  std::uint64_t place = 0;
  std::uint64_t disk = 0, directoryDisk = 0, countHere = 0, count = 0, size = 0, offset = 0;
};

Status Unreadable() {
  return FailedCall("read the end of the archive");
}
Status Contradiction() {
  return Fail("the archive's end records contradict each other");
}

/// The one record whose comment reaches to the file's end, or to zeros that fill up a block there. Another
/// mark inside that comment, or another record that fits as well, would let two readers see two archives:
/// neither is taken.
Result<EndFields> FindEnd(const Source& source) {
  constexpr std::uint64_t kMostZeros = 64 << 10;
  const std::uint64_t reach = std::min<std::uint64_t>(source.Size(), end::kLength + 0xFFFF + kMostZeros);
  std::vector<char> tail(reach);
  if (!source.ReadAt(source.Size() - reach, tail.data(), tail.size())) return Unreadable();

  std::size_t used = tail.size();
  while (used > 0 && tail[used - 1] == '\0') --used;
  std::optional<std::size_t> found;
  bool last = true;
  for (std::size_t at = reach < end::kLength ? 0 : reach - end::kLength + 1; at-- > 0;) {
    const char* p = tail.data() + at;
    if (*p != 'P' || Load32(p) != end::kMark) continue;
    const std::size_t length = at + end::kLength + Load16(p + end::kCommentLength);
    const bool fits = length >= used && length <= reach;
    if (fits && (found || !last)) return Fail("the archive has two possible ends");
    if (fits) found = at;
    last = false;
  }
  if (!found) return CutShort(source);

  const char* p = tail.data() + *found;
  EndFields fields;
  fields.place = source.Size() - reach + *found;
  fields.disk = Load16(p + end::kDisk);
  fields.directoryDisk = Load16(p + end::kDirectoryDisk);
  fields.countHere = Load16(p + end::kCountHere);
  fields.count = Load16(p + end::kCount);
  fields.size = Load32(p + end::kDirectorySize);
  fields.offset = Load32(p + end::kDirectoryOffset);
  return fields;
}

/// The zip64 record that the locator at `locatorPlace` points to. It must end where the locator begins.
/// Bytes before the archive may have moved both; `shift` gets their number.
Result<EndFields> ReadEnd64(const Source& source, const char* locator, std::uint64_t locatorPlace,
                            std::uint64_t& shift) {
  if (Load32(locator + locator64::kDisk) != 0 || Load32(locator + locator64::kDisks) > 1)
    return Fail("the archive is one of several discs");
  const std::uint64_t stated = Load64(locator + locator64::kOffset);
  const auto readAt = [&](std::uint64_t place, char* record) {
    if (locatorPlace < end64::kLength || place > locatorPlace - end64::kLength) return false;
    return source.ReadAt(place, record, end64::kLength) && Load32(record) == end64::kMark &&
           Load64(record + end64::kRecordSize) == locatorPlace - place - end64::kSizeLeavesOut;
  };
  char record[end64::kLength];
  EndFields fields;
  fields.place = stated;
  if (!readAt(stated, record)) {
    fields.place = locatorPlace - std::min<std::uint64_t>(locatorPlace, end64::kLength);
    if (fields.place < stated || !readAt(fields.place, record))
      return Fail("the archive's zip64 end record is not where it should be");
  }
  shift = fields.place - stated;
  fields.disk = Load32(record + end64::kDisk);
  fields.directoryDisk = Load32(record + end64::kDirectoryDisk);
  fields.countHere = Load64(record + end64::kCountHere);
  fields.count = Load64(record + end64::kCount);
  fields.size = Load64(record + end64::kDirectorySize);
  fields.offset = Load64(record + end64::kDirectoryOffset);
  return fields;
}

/// A short field must be all ones or hold what the long one holds.
bool Agree(const EndFields& shorter, const EndFields& longer) {
  const auto same = [](std::uint64_t narrow, std::uint64_t wide, std::uint64_t ones) {
    return narrow == ones || narrow == wide;
  };
  return same(shorter.countHere, longer.countHere, kIn64Of16) &&
         same(shorter.count, longer.count, kIn64Of16) && same(shorter.size, longer.size, kIn64Of32) &&
         same(shorter.offset, longer.offset, kIn64Of32) && same(shorter.disk, longer.disk, kIn64Of16) &&
         same(shorter.directoryDisk, longer.directoryDisk, kIn64Of16);
}

/// Puts the directory directly before the record at `fields.place`.
Result<DirectoryPlace> Settle(const EndFields& fields) {
  if (fields.disk != 0 || fields.directoryDisk != 0 || fields.countHere != fields.count)
    return Fail("the archive is one of several discs");
  if (fields.size > fields.place) return Fail("the archive's directory is larger than the archive");
  DirectoryPlace place;
  place.length = fields.size;
  place.start = fields.place - fields.size;
  place.count = fields.count;
  if (place.start < fields.offset) return Fail("the archive's directory is not where its end record says");
  place.shift = place.start - fields.offset;
  return place;
}

Result<DirectoryPlace> FindDirectoryByRecords(const Source& source) {
  Result<EndFields> last = FindEnd(source);
  if (!last.Ok()) return last.Failure();

  char locator[locator64::kLength];
  const bool room = last->place >= sizeof locator;
  const std::uint64_t locatorPlace = room ? last->place - sizeof locator : 0;
  if (room && !source.ReadAt(locatorPlace, locator, sizeof locator)) return Unreadable();

  if (!room || Load32(locator) != locator64::kMark) {
    if (last->size == kIn64Of32 || last->offset == kIn64Of32 || last->disk == kIn64Of16)
      return Fail("the archive's zip64 end record is missing");
    Result<DirectoryPlace> place = Settle(*last);
    if (!place.Ok()) return place;
    place->countWraps = true;
    if (place->shift >= kWrap32 && place->shift % kWrap32 == 0) {
      place->wrapped = true;
      place->shift = 0;
    }
    return place;
  }
  std::uint64_t shift = 0;
  Result<EndFields> end64 = ReadEnd64(source, locator, locatorPlace, shift);
  if (!end64.Ok()) return end64.Failure();
  if (!Agree(*last, *end64)) return Contradiction();
  Result<DirectoryPlace> place = Settle(*end64);
  if (!place.Ok()) return place;
  if (place->shift != shift) return Contradiction();
  place->has64 = true;
  return place;
}

}  // namespace

Result<DirectoryPlace> FindDirectory(const Source& source) {
  Result<DirectoryPlace> place = FindDirectoryByRecords(source);
  if (!place.Ok() || place->shift == 0) return place;
  char mark[4];
  if (!source.ReadAt(0, mark, sizeof mark)) return Unreadable();
  // What stands in front is an archive itself: it may be cut, and the end that of an archive stored in it.
  return Load32(mark) == local::kMark ? CutShort(source) : place;
}

}  // namespace archive
