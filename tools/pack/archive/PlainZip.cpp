// SPDX-License-Identifier: MIT
// Files go to the crew in blocks; what comes back in order becomes entries.
#include "pack/archive/PlainZip.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "pack/Progress.h"
#include "pack/archive/Crew.h"
#include "pack/archive/DeflateBlock.h"
#include "pack/archive/InputFile.h"
#include "pack/archive/OutputFile.h"
#include "pack/archive/Sketch.h"
#include "pack/archive/ZipFormat.h"

namespace pack {
namespace {

struct Block {
  const TreeItem* item = nullptr;
  std::string bytes;      // with what the block before ends with
  std::size_t begin = 0;  // of the block's own bytes
  bool first = false, last = false;
  bool deflate = false;
};

struct PackedBlock {
  const TreeItem* item = nullptr;
  std::string bytes;
  std::size_t size = 0;  // before it was packed
  std::uint32_t crc = 0;
  bool first = false, last = false;
  bool deflated = false;
};

PackedBlock PackBlock(Deflater& deflater, Block& block) {
  const std::size_t size = block.bytes.size() - block.begin;
  PackedBlock packed{block.item, {}, size, 0, block.first, block.last, block.deflate};
  packed.crc = libdeflate_crc32(0, block.bytes.data() + block.begin, size);
  if (block.deflate) packed.bytes = deflater.Deflate(block.bytes, block.begin, block.last);
  const bool whole = block.first && block.last;
  if (!block.deflate || (whole && packed.bytes.size() >= size)) {
    packed.bytes = block.bytes.substr(block.begin);
    packed.deflated = false;
  }
  return packed;
}

// Puts blocks together to entries.
class EntryWriter {
 public:
  explicit EntryWriter(OutputFile& out) : fOut(out) {}

  void Take(const PackedBlock& block) {
    if (block.first) Begin(block);
    fEntry.crc = block.first ? block.crc
                             : static_cast<std::uint32_t>(
                                   crc32_combine(fEntry.crc, block.crc, static_cast<z_off_t>(block.size)));
    fEntry.packed += block.bytes.size();
    if (!block.first) {
      fOut.Append(block.bytes);
    } else {
      fOut.Append(LocalHeader(fEntry) + block.bytes);
    }
    if (!block.last) return;
    if (fEntry.method == kDeflated && fEntry.packed >= fEntry.size) StoreInstead();
    if (!block.first) fOut.Overwrite(fEntry.place, LocalHeader(fEntry));
    fDirectory.Add(fEntry);
  }

  void Close() { fOut.Append(fDirectory.End(fOut.Size())); }

 private:
  void Begin(const PackedBlock& block) {
    fEntry = {.item = block.item, .method = block.deflated ? kDeflated : kStored, .place = fOut.Size()};
    fEntry.size = block.item->kind == Kind::kLink ? block.item->target.size() : block.item->size;
  }

  // For a large file whose samples promised more than the whole keeps.
  void StoreInstead() {
    fEntry.method = kStored;
    fEntry.packed = fEntry.size;
    fOut.Shorten(fEntry.place);
    fOut.Append(LocalHeader(fEntry));
    InputFile file(*fEntry.item);
    std::string buffer(1 << 20, '\0');
    std::uint32_t crc = 0;
    for (std::uint64_t rest = fEntry.size; rest > 0; rest -= buffer.size()) {
      buffer.resize(std::min<std::uint64_t>(rest, buffer.size()));
      file.Read(buffer.data(), buffer.size());
      crc = libdeflate_crc32(crc, buffer.data(), buffer.size());
      fOut.Append(buffer);
    }
    file.Finish();
    if (crc != fEntry.crc) file.RefuseChange();
  }

  OutputFile& fOut;
  ZipDirectory fDirectory;
  ZipEntry fEntry;
};

using Deflaters = Crew<Deflater, Block, PackedBlock>;

void PutFile(Deflaters& crew, const TreeItem& item, bool deflate, std::size_t blockSize) {
  InputFile file(item);
  std::string before;
  std::uint64_t rest = item.size;
  do {
    const std::size_t part = std::min<std::uint64_t>(rest, blockSize);
    Block block{&item, std::exchange(before, {}), 0, rest == item.size, rest == part, deflate};
    block.begin = block.bytes.size();
    block.bytes.resize(block.begin + part);
    file.Read(block.bytes.data() + block.begin, part);
    rest -= part;
    Progress::Current().Packed(part);
    if (!block.last && deflate)
      before = block.bytes.substr(block.bytes.size() - std::min(block.bytes.size(), kDeflateWindow));
    if (block.last) file.Finish();
    if (block.last) Progress::Current().FileDone();
    crew.Put(std::move(block));
  } while (rest > 0);
}

}  // namespace

void WritePlainZip(const std::vector<TreeItem>& items, const Compression& compression,
                   const std::filesystem::path& archive, const PlainLimits& limits) {
  const bool deflate = compression.method == Method::kDeflate;
  const std::vector<Sketch> sketches = deflate ? TakeSketches(items, 0) : std::vector<Sketch>(items.size());
  const std::size_t workers = limits.workers != 0 ? limits.workers : CountWorkers(4 * limits.blockSize);
  OutputFile out(archive);
  EntryWriter entries(out);
  Deflaters crew(
      workers, 4 * workers, [&compression] { return std::make_unique<Deflater>(compression.level); },
      PackBlock, [&entries](const PackedBlock& block) { entries.Take(block); });
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].kind == Kind::kFile) {
      PutFile(crew, items[i], deflate && !sketches[i].dense && items[i].size > 0, limits.blockSize);
    } else {
      crew.Put({.item = &items[i], .bytes = items[i].target, .first = true, .last = true});
    }
  }
  crew.Finish();
  entries.Close();
  out.Close();
}

}  // namespace pack
