// SPDX-License-Identifier: MIT
// One pass over each file with a rolling hash.
#include "pack/archive/Sketch.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "pack/archive/Crew.h"
#include "pack/archive/InputFile.h"
#include "pack/archive/Probe.h"

namespace pack {
namespace {

constexpr std::array<std::uint64_t, 256> MakeTable() {
  std::array<std::uint64_t, 256> table{};
  std::uint64_t state = 0x2545F4914F6CDD1D;
  for (std::uint64_t& value : table) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    value = state;
  }
  return table;
}
constexpr std::array<std::uint64_t, 256> kTable = MakeTable();

// A byte is shifted out after 64 others: the hash is one of the last 64 bytes.
void Scan(const std::string& bytes, unsigned thin, std::uint64_t& hash, std::vector<std::uint32_t>& marks) {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
  std::uint64_t h = hash;
  for (const char c : bytes) {
    h = (h << 1) + kTable[static_cast<unsigned char>(c)];
    if (h >> (64 - thin) == 0) marks.push_back(static_cast<std::uint32_t>(h * kSpread >> 32));
  }
  hash = h;
}

std::vector<std::uint32_t> MarksOf(const InputFile& file, std::uint64_t size, unsigned thin) {
  constexpr std::size_t kStep = 256 * 1024;
  std::vector<std::uint32_t> marks;
  std::uint64_t hash = 0;
  for (std::uint64_t place = 0; place < size; place += kStep)
    Scan(file.Sample(place, std::min<std::uint64_t>(kStep, size - place)), thin, hash, marks);
  std::sort(marks.begin(), marks.end());
  marks.erase(std::unique(marks.begin(), marks.end()), marks.end());
  return marks;
}

// One in 2^thin places is marked.
unsigned ThinFor(const std::vector<TreeItem>& items, std::size_t longest) {
  constexpr std::uint64_t kMostMarks = 4 << 20;
  std::uint64_t total = 0;
  for (const TreeItem& item : items) total += item.size <= longest ? item.size : 0;
  unsigned thin = 9;
  while (total >> thin > kMostMarks) ++thin;
  return thin;
}

}  // namespace

std::vector<Sketch> TakeSketches(const std::vector<TreeItem>& items, std::size_t longest) {
  using Range = std::pair<std::size_t, std::size_t>;
  constexpr std::size_t kBatch = 16;
  const unsigned thin = ThinFor(items, longest);
  const auto look = [&items, thin, longest](Probe& probe, const Range& range) {
    std::vector<Sketch> sketches(range.second - range.first);
    for (std::size_t i = range.first; i < range.second; ++i) {
      Sketch& sketch = sketches[i - range.first];
      if (items[i].kind != Kind::kFile || items[i].size == 0) continue;
      const InputFile file(items[i]);
      sketch.dense = probe.IsDense(file, items[i].size);
      if (!sketch.dense && items[i].size <= longest) sketch.marks = MarksOf(file, items[i].size, thin);
    }
    return sketches;
  };
  std::vector<Sketch> all;
  all.reserve(items.size());
  const std::size_t workers = CountWorkers(1 << 20);
  Crew<Probe, Range, std::vector<Sketch>> crew(
      workers, 4 * workers, std::make_unique<Probe>, look, [&all](std::vector<Sketch> sketches) {
        std::move(sketches.begin(), sketches.end(), std::back_inserter(all));
      });
  for (std::size_t begin = 0; begin < items.size(); begin += kBatch)
    crew.Put({begin, std::min(begin + kBatch, items.size())});
  crew.Finish();
  return all;
}

}  // namespace pack
