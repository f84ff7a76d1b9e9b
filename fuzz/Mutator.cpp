// SPDX-License-Identifier: MIT
// Rewrites names, data and the numbers that follow from them.
#include "fuzz/Mutator.h"

#include <libdeflate.h>

#include <iterator>
#include <random>
#include <string_view>

#include "fuzz/Bytes.h"
#include "fuzz/Records.h"

namespace fuzz {
namespace {

using archive::Load16;
namespace central = archive::central;
namespace end = archive::end;
namespace local = archive::local;

using Random = std::minstd_rand;

std::string_view Pick(Random& random, std::initializer_list<std::string_view> choices) {
  return choices.begin()[random() % choices.size()];
}

std::string NameOf(const std::string& bytes, std::size_t inDirectory) {
  return bytes.substr(inDirectory + central::kLength,
                      Load16(bytes.data() + inDirectory + central::kNameLength));
}

std::string Way(Random& random, const std::string& bytes, const Records& records) {
  constexpr unsigned kMostComponents = 4;
  std::string way;
  for (unsigned left = random() % kMostComponents + 1; left > 0; --left) {
    if (random() % 2 == 0)
      way += NameOf(bytes, records.directory[random() % records.directory.size()]);
    else
      way += Pick(random, {"..", "..", ".", "", "a", "b", "C:", ".ditto-", "__MACOSX"});
    if (left > 1 || random() % 4 == 0) way += Pick(random, {"/", "/", "/", "\\"});
  }
  return way;
}

void Rename(std::string& bytes, std::size_t record, std::size_t lengthField, std::size_t nameAt,
            const std::string& name) {
  const std::size_t length = Load16(bytes.data() + record + lengthField);
  Store<std::uint16_t>(bytes, record + lengthField, name.size());
  bytes.replace(record + nameAt, length, name);
}

/// The content's length and checksum; the packed length follows the end of a deflated stream.
struct Facts {
  std::size_t size = 0, compressed = 0;
  std::uint32_t crc = 0;
};

bool Measure(std::string_view room, bool deflated, Facts& facts) {
  if (!deflated) {
    facts = {room.size(), room.size(), libdeflate_crc32(0, room.data(), room.size())};
    return true;
  }
  static libdeflate_decompressor* const inflater = libdeflate_alloc_decompressor();
  static std::string content(64 << 10, '\0');
  if (libdeflate_deflate_decompress_ex(inflater, room.data(), room.size(), content.data(), content.size(),
                                       &facts.compressed, &facts.size) != LIBDEFLATE_SUCCESS)
    return false;
  facts.crc = libdeflate_crc32(0, content.data(), facts.size);
  return true;
}

void MendPair(std::string& bytes, const Records& records, std::size_t pair, std::size_t start) {
  const std::size_t header = records.headers[pair], inDirectory = records.directory[pair];
  const std::size_t next = records.NextOf(pair), data = DataOf(bytes, header);
  Store<std::uint32_t>(bytes, inDirectory + central::kOffset, header - start);
  if (data > next) return;
  const std::string name = NameOf(bytes, inDirectory);
  if (name.size() == Load16(bytes.data() + header + local::kNameLength))
    bytes.replace(header + local::kLength, name.size(), name);
  Facts facts;
  if ((Load16(bytes.data() + header + local::kFlags) & archive::flag::kDescriptor) ||
      !Measure(std::string_view(bytes).substr(data, next - data),
               Load16(bytes.data() + header + local::kMethod) != archive::kStored, facts))
    return;
  for (const std::size_t crc : {header + local::kCrc, inDirectory + central::kCrc}) {
    Store<std::uint32_t>(bytes, crc, facts.crc);
    Store<std::uint32_t>(bytes, crc + 4, facts.compressed);
    Store<std::uint32_t>(bytes, crc + 8, facts.size);
  }
}

}  // namespace

Records FindRecords(const std::string& bytes) {
  Records records;
  const auto all = [&](std::string_view mark, std::size_t length) {
    std::vector<std::size_t> places;
    for (std::size_t at = 0; (at = bytes.find(mark, at)) != std::string::npos && at + length <= bytes.size();
         at += length)
      places.push_back(at);
    return places;
  };
  records.headers = all("PK\3\4", local::kLength);
  records.directory = all("PK\1\2", central::kLength);
  const std::vector<std::size_t> ends = all("PK\5\6", end::kLength);
  if (!ends.empty()) records.end = ends.back();
  return records;
}

void Twist(std::string& bytes, unsigned seed) {
  Random random(seed);
  const Records records = FindRecords(bytes);
  if (records.Pairs() == 0) return;
  const std::size_t pair = random() % records.Pairs();
  const std::size_t header = records.headers[pair], inDirectory = records.directory[pair];
  if (header >= records.NextOf(pair) || header >= inDirectory) return;
  const std::string way = Way(random, bytes, records);
  switch (random() % 3) {
    case 0: {
      constexpr std::uint32_t kModes[] = {0100644, 0040755, 0120777, 0, 0020644};
      constexpr unsigned kHosts[] = {0, 3, 3, 10, 19};
      Store<std::uint8_t>(bytes, inDirectory + central::kHost, kHosts[random() % std::size(kHosts)]);
      Store<std::uint16_t>(bytes, inDirectory + central::kAttributes + 2,
                           kModes[random() % std::size(kModes)]);
      break;
    }
    case 1:
      if (DataOf(bytes, header) > inDirectory) return;
      Rename(bytes, inDirectory, central::kNameLength, central::kLength, way);
      Rename(bytes, header, local::kNameLength, local::kLength, way);
      break;
    default: {
      const std::size_t data = DataOf(bytes, header), next = records.NextOf(pair);
      if (data > next) return;
      Store<std::uint16_t>(bytes, header + local::kMethod, archive::kStored);
      Store<std::uint16_t>(bytes, inDirectory + central::kMethod, archive::kStored);
      bytes.replace(data, next - data, way);
    }
  }
}

void Mend(std::string& bytes) {
  const bool holed = std::string_view(bytes).starts_with(Bytes::kHoleMark);
  const std::size_t start = holed ? std::min(bytes.size(), Bytes::kHoleHead) : 0;
  const Records records = FindRecords(bytes);
  for (std::size_t pair = 0; pair < records.Pairs(); ++pair)
    if (records.headers[pair] < records.NextOf(pair)) MendPair(bytes, records, pair, start);
  if (records.directory.empty() || records.end == std::string::npos) return;
  const std::size_t directory = records.directory.front();
  Store<std::uint16_t>(bytes, records.end + end::kCountHere, records.directory.size());
  Store<std::uint16_t>(bytes, records.end + end::kCount, records.directory.size());
  Store<std::uint32_t>(bytes, records.end + end::kDirectorySize, records.end - directory);
  Store<std::uint32_t>(bytes, records.end + end::kDirectoryOffset, directory - start);
}

void Lie(std::string& bytes, unsigned seed) {
  Random random(seed);
  const Records records = FindRecords(bytes);
  if (records.Pairs() == 0) return;
  const std::size_t pair = random() % records.Pairs();
  const std::size_t field = random() % 4 == 0 ? 0 : 8;  // from the checksum on
  const std::uint32_t away[] = {~0u, 1, 5000, 0xFFFF0000};
  const std::uint32_t by = away[random() % std::size(away)];
  for (const std::size_t at : {records.headers[pair] + local::kCrc, records.directory[pair] + central::kCrc})
    Store<std::uint32_t>(bytes, at + field, archive::Load32(bytes.data() + at + field) + by);
}

}  // namespace fuzz
