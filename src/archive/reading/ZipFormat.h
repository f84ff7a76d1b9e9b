// SPDX-License-Identifier: MIT
// The records of a zip file: their marks, the offsets of their fields, and little-endian loads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace archive {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the loads below copy bytes as they are");

template <class T>
inline T Load(const void* from) {
  T value;
  std::memcpy(&value, from, sizeof value);
  return value;
}
inline std::uint16_t Load16(const char* p) {
  return Load<std::uint16_t>(p);
}
inline std::uint32_t Load32(const char* p) {
  return Load<std::uint32_t>(p);
}
inline std::uint64_t Load64(const char* p) {
  return Load<std::uint64_t>(p);
}

/// A field of all ones says that the value stands in the zip64 record instead.
constexpr std::uint16_t kIn64Of16 = 0xFFFF;
constexpr std::uint32_t kIn64Of32 = 0xFFFFFFFF;
constexpr std::uint64_t kWrap32 = std::uint64_t{1} << 32;

namespace local {  // before each entry's data
constexpr std::uint32_t kMark = 0x04034B50;
constexpr std::size_t kFlags = 6, kMethod = 8, kCrc = 14, kCompressed = 18, kSize = 22, kNameLength = 26,
                      kExtraLength = 28, kLength = 30;
}  // namespace local

namespace descriptor {  // after the data of a streamed entry; the mark may be missing
constexpr std::uint32_t kMark = 0x08074B50;
constexpr std::size_t kShortest = 12, kLongest = 24;
}  // namespace descriptor

namespace central {  // one a directory entry
constexpr std::uint32_t kMark = 0x02014B50;
constexpr std::size_t kHost = 5, kFlags = 8, kMethod = 10, kTime = 12, kDate = 14, kCrc = 16,
                      kCompressed = 20, kSize = 24, kNameLength = 28, kExtraLength = 30, kCommentLength = 32,
                      kDisk = 34, kAttributes = 38, kOffset = 42, kLength = 46;
}  // namespace central

namespace end {  // the last record of the file
constexpr std::uint32_t kMark = 0x06054B50;
constexpr std::size_t kDisk = 4, kDirectoryDisk = 6, kCountHere = 8, kCount = 10, kDirectorySize = 12,
                      kDirectoryOffset = 16, kCommentLength = 20, kLength = 22;
}  // namespace end

namespace locator64 {  // directly before the last record
constexpr std::uint32_t kMark = 0x07064B50;
constexpr std::size_t kDisk = 4, kOffset = 8, kDisks = 16, kLength = 20;
}  // namespace locator64

namespace end64 {
constexpr std::uint32_t kMark = 0x06064B50;
constexpr std::size_t kRecordSize = 4, kDisk = 16, kDirectoryDisk = 20, kCountHere = 24, kCount = 32,
                      kDirectorySize = 40, kDirectoryOffset = 48, kLength = 56;
/// The record's own size field leaves out the mark and itself.
constexpr std::size_t kSizeLeavesOut = 12;
}  // namespace end64

namespace flag {
constexpr std::uint16_t kEncrypted = 1 << 0, kDescriptor = 1 << 3, kPatch = 1 << 5, kStrong = 1 << 6,
                        kUtf8 = 1 << 11, kMasked = 1 << 13;
}  // namespace flag

namespace extra {
constexpr std::uint16_t kZip64 = 0x0001, kTimes = 0x5455, kUnicodePath = 0x7075;
}  // namespace extra

constexpr std::uint16_t kStored = 0, kDeflated = 8;

/// The system that wrote an entry, as far as it matters to names and modes.
enum class Host : std::uint8_t { Dos = 0, Unix = 3, Os2 = 6, Ntfs = 10, Vfat = 14, Mac = 19 };

}  // namespace archive
