// SPDX-License-Identifier: MIT
// Every local header against its directory entry, in the order of the file.
#include "archive/reading/LocalHeaders.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <numeric>
#include <thread>

#include "archive/reading/Extras.h"
#include "archive/reading/Names.h"
#include "archive/reading/Peek.h"
#include "archive/reading/Utf8.h"
#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

Status Disagrees(const Entry& entry, std::string_view what) {
  return Fail("the local header of the entry ", Quoted(entry.name), " ", what);
}

/// Whether a length of a local header says what the directory says. Without zip64 both are rests.
bool SameLength(std::uint64_t inHeader, std::uint64_t inDirectory, bool wraps) {
  return inHeader == inDirectory || (wraps && inHeader == inDirectory % kWrap32);
}

/// Whether one of the four forms of the record behind the data stands at `p`: with or without its mark,
/// with short or long lengths.
bool DescriptorAgrees(const char* p, std::uint64_t room, const Entry& entry) {
  for (const std::size_t mark : {4, 0}) {
    if (room < mark + descriptor::kShortest) continue;
    if (mark != 0 && Load32(p) != descriptor::kMark) continue;
    const char* lengths = p + mark + 4;
    if (Load32(p + mark) != entry.crc) continue;
    if (Load32(lengths) == entry.compressed % kWrap32 && Load32(lengths + 4) == entry.size % kWrap32)
      return true;
    if (room < mark + 20) continue;
    if (Load64(lengths) == entry.compressed && Load64(lengths + 8) == entry.size) return true;
  }
  return false;
}

/// Other readers take the name from here. Backslashes are as good as the directory's slashes.
bool SameUnicodePath(const Entry& entry, const Extras& extras) {
  if (!extras.unicodePath) return true;
  const StoredName stored{.bytes = entry.storedName, .unicodePath = extras.unicodePath};
  std::string path(CurrentUnicodePath(stored).value_or(entry.name));
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path.ends_with('/')) path.pop_back();
  std::string name(entry.name);
  std::replace(name.begin(), name.end(), '\\', '/');
  return path == name;
}

/// What a local header says besides its name.
struct LocalFields {
  std::uint64_t compressed = 0, size = 0;
  std::uint32_t crc = 0;
  std::size_t extraLength = 0;

  bool IsLong() const { return compressed == kIn64Of32 || size == kIn64Of32; }
  bool NeedsExtra() const { return extraLength > 0 || IsLong(); }
};

/// `p` holds the fixed part and as many bytes more as the entry's name has.
Status CompareFixed(const char* p, const Entry& entry, LocalFields& fields) {
  if (Load32(p) != local::kMark) return Disagrees(entry, "is missing");
  if (std::string_view(p + local::kLength, entry.storedName.size()) != entry.storedName ||
      Load16(p + local::kNameLength) != entry.storedName.size())
    return Disagrees(entry, "has another name");
  const unsigned compared = flag::kEncrypted | flag::kDescriptor | flag::kStrong | flag::kMasked |
                            (IsAscii(entry.storedName) ? 0u : flag::kUtf8);
  if ((Load16(p + local::kFlags) & compared) != (entry.flags & compared))
    return Disagrees(entry, "has other flags");
  if (Load16(p + local::kMethod) != entry.method) return Disagrees(entry, "has another method");
  fields = {Load32(p + local::kCompressed), Load32(p + local::kSize), Load32(p + local::kCrc),
            Load16(p + local::kExtraLength)};
  return {};
}

Status CompareLengths(LocalFields fields, std::string_view extraArea, const Entry& entry,
                      bool& needsDescriptor) {
  if (fields.NeedsExtra()) {
    const auto extras = ReadExtras(extraArea);
    if (!extras && fields.IsLong()) return Disagrees(entry, "has damaged extra fields");
    if (extras && !SameUnicodePath(entry, *extras)) return Disagrees(entry, "has another name");
    Zip64Values values(extras.value_or(Extras{}));
    if (!values.Take(fields.size) || !values.Take(fields.compressed))
      return Disagrees(entry, "lacks its zip64 values");
  }
  const bool same = fields.crc == entry.crc &&
                    SameLength(fields.compressed, entry.compressed, entry.sizeWraps) &&
                    SameLength(fields.size, entry.size, entry.sizeWraps);
  if (same) return {};
  const bool streamed = entry.flags & flag::kDescriptor;
  if (!streamed || (fields.crc != 0 && fields.crc != entry.crc) ||
      (fields.compressed != 0 && fields.compressed != entry.compressed) ||
      (fields.size != 0 && fields.size != entry.size))
    return Disagrees(entry, "states other lengths or another checksum");
  needsDescriptor = true;
  return {};
}

class Checker {
 public:
  explicit Checker(const Source& source) : fPeek(source) {}

  /// `next` is where the data of the entry must have ended.
  Status Check(Entry& entry, std::uint64_t next) {
    bool needsDescriptor = false;
    Status status = Header(entry, needsDescriptor);
    if (!status.Ok()) return status;
    if (entry.data > next || entry.compressed > next - entry.data)
      return Fail("the entry ", Quoted(entry.name), " overlaps with another one or with the directory");
    if (!needsDescriptor) return {};
    const std::uint64_t end = entry.data + entry.compressed;
    const std::uint64_t room = std::min<std::uint64_t>(next - end, descriptor::kLongest);
    const char* p = fPeek.At(end, room);
    if (p == nullptr) return FailedCall("read the archive at the entry", entry.name);
    return DescriptorAgrees(p, room, entry) ? Status() : Disagrees(entry, "is not completed behind its data");
  }

 private:
  Status Header(Entry& entry, bool& needsDescriptor) {
    const char* p = fPeek.At(entry.header, local::kLength + entry.storedName.size());
    if (p == nullptr) return FailedCall("read the archive at the entry", entry.name);
    LocalFields fields;
    Status status = CompareFixed(p, entry, fields);
    if (!status.Ok()) return status;
    const std::uint64_t extra = entry.header + local::kLength + entry.storedName.size();
    entry.data = extra + fields.extraLength;
    const char* area = fields.NeedsExtra() ? fPeek.At(extra, fields.extraLength) : "";
    if (area == nullptr) return FailedCall("read the archive at the entry", entry.name);
    return CompareLengths(fields, {area, fields.NeedsExtra() ? fields.extraLength : 0}, entry,
                          needsDescriptor);
  }

  Peek fPeek;
};

}  // namespace

Status CompareLocalHeader(std::string_view header, const Entry& entry) {
  const std::size_t fixed = local::kLength + entry.storedName.size();
  LocalFields fields;
  Status status = CompareFixed(header.data(), entry, fields);
  if (!status.Ok()) return status;
  if (fixed + fields.extraLength != header.size()) return Disagrees(entry, "has another length");
  // The directory's bytes lie before the name that it stores.
  const char* inDirectory = entry.storedName.data() - central::kLength + central::kFlags;
  constexpr std::size_t kUpToChecksum = local::kCrc - local::kFlags;
  if (std::memcmp(header.data() + local::kFlags, inDirectory, kUpToChecksum) != 0)
    return Disagrees(entry, "has other flags or another time");
  bool isStreamed = false;
  return CompareLengths(fields, header.substr(fixed), entry, isStreamed);
}

std::vector<std::uint32_t> OrderInFile(const std::vector<Entry>& entries) {
  std::vector<std::uint32_t> order(entries.size());
  std::iota(order.begin(), order.end(), 0u);
  const auto before = [&](std::uint32_t a, std::uint32_t b) { return entries[a].header < entries[b].header; };
  if (!std::is_sorted(order.begin(), order.end(), before)) std::sort(order.begin(), order.end(), before);
  return order;
}

Status CheckLocalHeaders(const Source& source, std::vector<Entry>& entries,
                         const std::vector<std::uint32_t>& order, std::uint64_t limit, unsigned threads,
                         const std::atomic<bool>* stop, const std::function<void()>& meanwhile) {
  constexpr std::size_t kPiece = 2048;
  const std::size_t pieces = (order.size() + kPiece - 1) / kPiece;
  std::vector<Status> results(pieces);
  std::atomic<std::size_t> next{0};
  std::atomic<bool> outOfMemory{false};
  const auto checkPieces = [&] {
    Checker checker(source);
    for (std::size_t piece = next++; piece < pieces; piece = next++) {
      if (Stopped(stop)) results[piece] = Interrupted();
      const std::size_t last = std::min((piece + 1) * kPiece, order.size());
      for (std::size_t i = piece * kPiece; i < last && results[piece].Ok(); ++i) {
        const std::uint64_t end = i + 1 < order.size() ? entries[order[i + 1]].header : limit;
        results[piece] = checker.Check(entries[order[i]], end);
      }
    }
  };
  const auto check = [&] {
    try {
      checkPieces();
    } catch (const std::bad_alloc&) {
      outOfMemory = true;
    }
  };
  std::vector<std::jthread> others;
  try {
    for (std::size_t thread = 1; thread < std::min<std::size_t>(threads, pieces); ++thread)
      others.emplace_back(check);
  } catch (const std::system_error&) {
    // this thread does it all
  }
  meanwhile();
  check();
  for (std::jthread& other : others) other.join();
  if (outOfMemory) return Fail("there is not enough memory");
  const auto bad = std::find_if(results.begin(), results.end(), [](const Status& s) { return !s.Ok(); });
  return bad == results.end() ? Status() : *bad;
}

}  // namespace archive
