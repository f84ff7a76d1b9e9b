// SPDX-License-Identifier: MIT
// Reads the central headers one after the other and judges each by itself.
#include "archive/reading/Directory.h"

#include <sys/stat.h>

#include <algorithm>
#include <ctime>

#include "archive/reading/Extras.h"
#include "archive/reading/Names.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

constexpr std::uint64_t kLargestDirectory = std::uint64_t{1} << 30;
constexpr std::uint16_t kFileMode = 0644, kFolderMode = 0755, kLinkMode = 0777;

/// Local times of the DOS kind to seconds since 1970. Neighbours in an archive often share a time.
class DosClock {
 public:
  std::int64_t Seconds(std::uint32_t dateAndTime) {
    if (dateAndTime != fLast || !fKnown) {
      fLast = dateAndTime;
      fKnown = true;
      std::tm parts{};
      parts.tm_year = static_cast<int>(dateAndTime >> 25) + 80;
      parts.tm_mon = std::max(static_cast<int>(dateAndTime >> 21 & 15) - 1, 0);
      parts.tm_mday = std::max(static_cast<int>(dateAndTime >> 16 & 31), 1);
      parts.tm_hour = static_cast<int>(dateAndTime >> 11 & 31);
      parts.tm_min = static_cast<int>(dateAndTime >> 5 & 63);
      parts.tm_sec = static_cast<int>(dateAndTime & 31) * 2;
      parts.tm_isdst = -1;
      fSeconds = std::mktime(&parts);
    }
    return fSeconds;
  }

 private:
  std::uint32_t fLast = 0;
  bool fKnown = false;
  std::int64_t fSeconds = 0;
};

/// Reads one central header after the other.
class Reader {
 public:
  Reader(const DirectoryPlace& place, Directory& directory)
      : fPlace(place), fDirectory(directory), fRest(directory.bytes.get(), place.length) {}

  Status All(const std::atomic<bool>* stop) {
    while (!fRest.empty()) {
      if (Stopped(stop)) return Interrupted();
      Status status = Next();
      if (!status.Ok()) return status;
    }
    const std::uint64_t counted = fDirectory.entries.size();
    const bool agrees = fPlace.countWraps ? counted % 0x10000 == fPlace.count : counted == fPlace.count;
    return agrees ? Status() : Fail("the archive's directory does not hold as many entries as it says");
  }

 private:
  Status Next() {
    const char* p = fRest.data();
    if (fRest.size() < central::kLength || Load32(p) != central::kMark)
      return Fail("the archive's directory is damaged after ",
                  fDirectory.entries.empty() ? "its start" : Quoted(fDirectory.entries.back().name));
    const std::size_t nameLength = Load16(p + central::kNameLength);
    const std::size_t extraLength = Load16(p + central::kExtraLength);
    const std::size_t length =
        central::kLength + nameLength + extraLength + Load16(p + central::kCommentLength);
    if (fRest.size() < length) return Fail("the archive's directory is cut short");

    Entry entry;
    entry.storedName = fRest.substr(central::kLength, nameLength);
    const auto extras = ReadExtras(fRest.substr(central::kLength + nameLength, extraLength));
    if (!extras) return Refuse(entry.storedName, "has damaged extra fields");
    fRest.remove_prefix(length);
    entry.flags = Load16(p + central::kFlags);
    entry.method = Load16(p + central::kMethod);
    entry.crc = Load32(p + central::kCrc);
    entry.modified = extras->modified ? *extras->modified : fClock.Seconds(Load32(p + central::kTime));
    for (auto step : {&Reader::Name, &Reader::Numbers, &Reader::KindAndMode}) {
      Status status = (this->*step)(p, *extras, entry);
      if (!status.Ok()) return status;
    }
    Status status = CheckReadable(entry);
    if (status.Ok()) fDirectory.entries.push_back(entry);
    return status;
  }

  static Status Refuse(std::string_view name, std::string_view what) {
    return Fail("the entry ", Quoted(name), " ", what);
  }

  Status Name(const char* p, const Extras& extras, Entry& entry) {
    StoredName stored;
    stored.bytes = entry.storedName;
    stored.host = static_cast<Host>(p[central::kHost]);
    stored.utf8 = entry.flags & flag::kUtf8;
    stored.unicodePath = extras.unicodePath;
    Result<std::optional<std::string>> decoded = DecodeName(stored);
    if (!decoded.Ok()) return decoded.Failure();
    entry.name = entry.storedName;
    if (*decoded) entry.name = fDirectory.decodedNames.emplace_back(std::move(**decoded));
    Status status = CheckPath(entry.name);
    if (!status.Ok()) return status;
    if (entry.name.back() == '/') {
      entry.kind = Kind::Folder;
      entry.name.remove_suffix(1);
    }
    entry.leftOut = entry.name.substr(0, entry.name.find('/')) == kMetadataFolder;
    return {};
  }

  Status Numbers(const char* p, const Extras& extras, Entry& entry) {
    entry.size = Load32(p + central::kSize);
    entry.compressed = Load32(p + central::kCompressed);
    entry.header = Load32(p + central::kOffset);
    Zip64Values values(extras);
    if (!values.Take(entry.size) || !values.Take(entry.compressed) || !values.Take(entry.header))
      return Refuse(entry.name, "lacks its zip64 values");
    const std::uint16_t disk = Load16(p + central::kDisk);
    if (disk != 0 && disk != kIn64Of16) return Refuse(entry.name, "is on another disc");
    if (fPlace.wrapped && extras.zip64) return Refuse(entry.name, "contradicts the archive's end record");
    entry.sizeWraps = !fPlace.has64 && !extras.zip64;
    if (fPlace.wrapped) return {};
    if (entry.header >= fPlace.start - fPlace.shift || entry.compressed > fPlace.start)
      return Refuse(entry.name, "lies outside of the archive");
    entry.header += fPlace.shift;
    return {};
  }

  Status KindAndMode(const char* p, const Extras&, Entry& entry) {
    const Host host = static_cast<Host>(p[central::kHost]);
    const bool hasMode = host == Host::Unix || host == Host::Mac;
    const auto mode = static_cast<std::uint16_t>(hasMode ? Load32(p + central::kAttributes) >> 16 : 0);
    const std::uint16_t type = mode & S_IFMT;
    if (type == S_IFLNK && entry.kind != Kind::Folder) {
      entry.kind = Kind::Link;
    } else if (type == S_IFDIR ? entry.kind != Kind::Folder : type == S_IFLNK) {
      return Refuse(entry.name, "has a name and a mode of two kinds");
    } else if (type != 0 && type != S_IFREG && type != S_IFDIR && entry.size == 0) {
      // With data it is a plain file: what a writer read from a pipe has the pipe's mode.
      return Refuse(entry.name, "is a device or another special file");
    }
    // Some writers give a folder the mode of a file, with which nobody could enter it.
    const bool isStated = mode != 0 && (entry.kind != Kind::Folder || type != S_IFREG);
    const std::uint16_t common = entry.kind == Kind::Folder ? kFolderMode : kFileMode;
    entry.mode = isStated ? mode & 0777 : common;
    if (entry.kind == Kind::Link) entry.mode = kLinkMode;
    return {};
  }

  Status CheckReadable(const Entry& entry) const {
    if (entry.flags & (flag::kEncrypted | flag::kStrong | flag::kMasked))
      return Refuse(entry.name, "is encrypted");
    if (entry.flags & flag::kPatch) return Refuse(entry.name, "is a patch to another file");
    if (entry.method != kStored && entry.method != kDeflated)
      return Refuse(entry.name, "is packed by an unknown method");
    if (!entry.Deflated() && entry.size != entry.compressed)
      return Refuse(entry.name, "is stored with two lengths");
    constexpr std::uint64_t kEmptyStream = 16;  // what writers put for no data, with some room
    if (entry.kind == Kind::Folder && (entry.size != 0 || entry.compressed > kEmptyStream || entry.crc != 0))
      return Refuse(entry.name, "is a folder with data");
    return {};
  }

  const DirectoryPlace& fPlace;
  Directory& fDirectory;
  std::string_view fRest;
  DosClock fClock;
};

}  // namespace

Result<Directory> ReadDirectory(const Source& source, const DirectoryPlace& place,
                                const std::atomic<bool>* stop) {
  if (place.length > kLargestDirectory) return Fail("the archive's directory is too large");
  Directory directory;
  directory.bytes = std::make_unique_for_overwrite<char[]>(place.length);
  if (!source.ReadAt(place.start, directory.bytes.get(), place.length))
    return FailedCall("read the archive's directory");
  directory.entries.reserve(std::min(place.count, place.length / central::kLength));
  Status status = Reader(place, directory).All(stop);
  if (!status.Ok()) return status;
  return directory;
}

}  // namespace archive
