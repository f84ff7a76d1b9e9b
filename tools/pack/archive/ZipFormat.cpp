// SPDX-License-Identifier: MIT
// The fields in their order.
#include "pack/archive/ZipFormat.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "pack/archive/LittleEndian.h"

namespace pack {
namespace {

constexpr std::uint64_t kMost16 = 0xFFFF;
constexpr std::uint64_t kMost32 = 0xFFFFFFFF;  // this value itself says that the number is elsewhere
constexpr std::uint16_t kOnUnix = 3 << 8;

bool IsBig(const ZipEntry& entry) {
  return entry.size >= kMost32;
}

std::uint16_t VersionFor(const ZipEntry& entry, bool farOff) {
  if (IsBig(entry) || farOff) return 45;
  return entry.method == kDeflated || entry.item->kind == Kind::kFolder ? 20 : 10;
}

// In steps of two seconds from 1980 to 2107, and UTC, so that the place of packing doesn't show.
std::pair<std::uint16_t, std::uint16_t> DosTimeAndDate(std::time_t seconds) {
  constexpr int kFirstYear = 1980, kLastYear = 2107;
  std::tm utc{};
  if (gmtime_r(&seconds, &utc) == nullptr || utc.tm_year + 1900 < kFirstYear) return {0, 1 << 5 | 1};
  if (utc.tm_year + 1900 > kLastYear) return {0xBF7D, 0xFF9F};
  return {static_cast<std::uint16_t>(utc.tm_hour << 11 | utc.tm_min << 5 | utc.tm_sec / 2),
          static_cast<std::uint16_t>((utc.tm_year + 1900 - kFirstYear) << 9 | (utc.tm_mon + 1) << 5 |
                                     utc.tm_mday)};
}

std::uint16_t FlagsFor(const std::string& name) {
  constexpr std::uint16_t kUtf8 = 0x800;
  const bool ascii = std::all_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x80; });
  return ascii ? 0 : kUtf8;
}

// From the version to the sizes, which both headers have alike.
void PutCommon(std::string& to, const ZipEntry& entry, std::uint16_t version) {
  const auto [time, date] = DosTimeAndDate(entry.item->stated);
  PutLittle(to, version, 2);
  PutLittle(to, FlagsFor(entry.item->name), 2);
  PutLittle(to, entry.method, 2);
  PutLittle(to, time, 2);
  PutLittle(to, date, 2);
  PutLittle(to, entry.crc, 4);
  PutLittle(to, IsBig(entry) ? kMost32 : entry.packed, 4);
  PutLittle(to, IsBig(entry) ? kMost32 : entry.size, 4);
  PutLittle(to, entry.item->name.size(), 2);
}

std::string ExtraFields(const ZipEntry& entry, bool farOff) {
  constexpr std::uint16_t kZip64 = 0x0001, kUnixTime = 0x5455;
  std::string extra;
  if (IsBig(entry) || farOff) {
    PutLittle(extra, kZip64, 2);
    PutLittle(extra, (IsBig(entry) ? 16U : 0U) + (farOff ? 8U : 0U), 2);
    if (IsBig(entry)) PutLittle(extra, entry.size, 8);
    if (IsBig(entry)) PutLittle(extra, entry.packed, 8);
    if (farOff) PutLittle(extra, entry.place, 8);
  }
  const std::time_t time = std::clamp<std::time_t>(entry.item->stated, INT32_MIN, INT32_MAX);
  PutLittle(extra, kUnixTime, 2);
  PutLittle(extra, 5, 2);
  PutLittle(extra, 1, 1);  // of the times that the field could hold, that of the last change
  PutLittle(extra, static_cast<std::uint32_t>(time), 4);
  return extra;
}

}  // namespace

std::string LocalHeader(const ZipEntry& entry) {
  const std::string extra = ExtraFields(entry, false);
  std::string header = "PK\x03\x04";
  PutCommon(header, entry, VersionFor(entry, false));
  PutLittle(header, extra.size(), 2);
  return header + entry.item->name + extra;
}

void ZipDirectory::Add(const ZipEntry& entry) {
  const bool farOff = entry.place >= kMost32;
  const std::uint16_t version = VersionFor(entry, farOff);
  const std::string extra = ExtraFields(entry, farOff);
  fBytes += "PK\x01\x02";
  PutLittle(fBytes, kOnUnix | version, 2);
  PutCommon(fBytes, entry, version);
  PutLittle(fBytes, extra.size(), 2);
  PutLittle(fBytes, 0, 2 + 2 + 2);  // no comment, on the only disc, no text
  PutLittle(fBytes, std::uint64_t{entry.item->mode} << 16, 4);
  PutLittle(fBytes, farOff ? kMost32 : entry.place, 4);
  fBytes += entry.item->name + extra;
  ++fCount;
}

std::string ZipDirectory::End(std::uint64_t place) {
  const std::uint64_t size = fBytes.size();
  if (fCount >= kMost16 || size >= kMost32 || place >= kMost32) {
    constexpr std::uint16_t kVersion = 45;
    fBytes += "PK\x06\x06";
    PutLittle(fBytes, 44, 8);  // of the rest of this record
    PutLittle(fBytes, kOnUnix | kVersion, 2);
    PutLittle(fBytes, kVersion, 2);
    PutLittle(fBytes, 0, 4 + 4);
    PutLittle(fBytes, fCount, 8);
    PutLittle(fBytes, fCount, 8);
    PutLittle(fBytes, size, 8);
    PutLittle(fBytes, place, 8);
    fBytes += "PK\x06\x07";
    PutLittle(fBytes, 0, 4);
    PutLittle(fBytes, place + size, 8);
    PutLittle(fBytes, 1, 4);
  }
  fBytes += "PK\x05\x06";
  PutLittle(fBytes, 0, 2 + 2);
  PutLittle(fBytes, std::min(fCount, kMost16), 2);
  PutLittle(fBytes, std::min(fCount, kMost16), 2);
  PutLittle(fBytes, std::min(size, kMost32), 4);
  PutLittle(fBytes, std::min(place, kMost32), 4);
  PutLittle(fBytes, 0, 2);
  return std::move(fBytes);
}

}  // namespace pack
