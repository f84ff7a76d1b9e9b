// SPDX-License-Identifier: MIT
// Puts archives together.
#include "support/ZipBuilder.h"

#include <libdeflate.h>

namespace ziptest {
namespace {

constexpr std::uint32_t kDate = 0x52C16000;  // 2021-06-01 12:00

std::string LocalHeader(const Says& s) {
  return "PK\3\4" + Le(20, 2) + Le(s.flags, 2) + Le(s.method, 2) + Le(kDate, 4) + Le(s.crc, 4) +
         Le(s.compressed, 4) + Le(s.size, 4) + Le(s.nameLength, 2) + Le(s.extra.size(), 2) + s.name + s.extra;
}

std::string CentralHeader(const Says& s, const Item& item) {
  return "PK\1\2" + Le(20, 1) + Le(item.host, 1) + Le(20, 2) + Le(s.flags, 2) + Le(s.method, 2) +
         Le(kDate, 4) + Le(s.crc, 4) + Le(s.compressed, 4) + Le(s.size, 4) + Le(s.nameLength, 2) +
         Le(s.extra.size(), 2) + Le(0, 2) + Le(s.disk, 2) + Le(0, 2) + Le(std::uint64_t{item.mode} << 16, 4) +
         Le(s.offset, 4) + s.name + s.extra;
}

std::string Descriptor(const Item& item, const Says& s) {
  if (item.tail == Tail::None) return "";
  const bool marked = item.tail == Tail::ShortMarked || item.tail == Tail::LongMarked;
  const int width = item.tail == Tail::Long || item.tail == Tail::LongMarked ? 8 : 4;
  return (marked ? "PK\7\10" : "") + Le(s.crc, 4) + Le(s.compressed, width) + Le(s.size, width);
}

std::string End(const Ending& e) {
  std::string bytes;
  if (e.zip64)
    bytes += "PK\6\6" + Le(44, 8) + Le(45, 2) + Le(45, 2) + Le(0, 8) + Le(e.count64, 8) + Le(e.count64, 8) +
             Le(e.size64, 8) + Le(e.offset64, 8) + "PK\6\7" + Le(0, 4) + Le(e.place64, 8) + Le(1, 4);
  return bytes + "PK\5\6" + Le(e.disk, 2) + Le(0, 2) + Le(e.countHere, 2) + Le(e.count, 2) + Le(e.size, 4) +
         Le(e.offset, 4) + Le(e.comment.size(), 2) + e.comment;
}

}  // namespace

std::string Le(std::uint64_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 0xFF);
  return out;
}

std::uint32_t Crc(const std::string& bytes) {
  return libdeflate_crc32(0, bytes.data(), bytes.size());
}

std::string Deflate(const std::string& content) {
  libdeflate_compressor* compressor = libdeflate_alloc_compressor(6);
  std::string packed(libdeflate_deflate_compress_bound(compressor, content.size()), '\0');
  packed.resize(
      libdeflate_deflate_compress(compressor, content.data(), content.size(), packed.data(), packed.size()));
  libdeflate_free_compressor(compressor);
  return packed;
}

std::string Extra(std::uint16_t id, const std::string& body) {
  return Le(id, 2) + Le(body.size(), 2) + body;
}

std::string Zip::Bytes() const {
  std::string bytes = before, directory;
  const std::uint64_t shift = countsBefore ? 0 : before.size();
  std::uint64_t count = 0;
  for (const Item& item : items) {
    const std::string packed = item.packed.value_or(item.deflate ? Deflate(item.content) : item.content);
    Says says;
    says.flags = static_cast<std::uint16_t>(item.flags | (item.tail == Tail::None ? 0 : 8));
    says.method = item.deflate ? 8 : 0;
    says.crc = Crc(item.content);
    says.compressed = packed.size();
    says.size = item.content.size();
    says.offset = bytes.size() - shift;
    says.name = item.name;
    says.nameLength = static_cast<std::uint16_t>(item.name.size());
    Says inside = says, outside = says;
    if (item.tail != Tail::None) inside.crc = 0, inside.compressed = inside.size = 0;
    inside.extra = item.localExtra;
    outside.extra = item.centralExtra;
    if (item.local) item.local(inside);
    if (item.central) item.central(outside);
    bytes += LocalHeader(inside) + packed + Descriptor(item, says);
    if (item.onlyLocal) continue;
    directory += CentralHeader(outside, item);
    ++count;
  }
  bytes += between;
  Ending e;
  e.countHere = e.count = e.count64 = count;
  e.size = e.size64 = directory.size();
  e.offset = e.offset64 = bytes.size() - shift;
  bytes += directory;
  e.place64 = bytes.size() - shift;
  if (ending) ending(e);
  return bytes + End(e);
}

}  // namespace ziptest
