// SPDX-License-Identifier: MIT
// Samples through the fastest compression.
#include "pack/archive/Probe.h"

#include <zstd.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "pack/archive/Crew.h"

namespace pack {
namespace {

constexpr std::size_t kSample = 4096;
constexpr std::uint64_t kSmallest = 1024;  // below it there is nothing to gain or to lose
constexpr std::uint64_t kStep = 64 * 1024;
constexpr std::uint64_t kMostSamples = 16;

}  // namespace

Probe::Probe() : fContext(ZSTD_createCCtx()), fRoom(ZSTD_compressBound(kSample), '\0') {
  if (!fContext) throw std::bad_alloc();
}

void Probe::Free::operator()(ZSTD_CCtx_s* context) const {
  ZSTD_freeCCtx(context);
}

bool Probe::IsDense(const InputFile& file, std::uint64_t size) {
  if (size < kSmallest) return false;
  const std::uint64_t samples = std::clamp<std::uint64_t>(size / kStep, 1, kMostSamples);
  std::uint64_t before = 0, after = 0;
  for (std::uint64_t i = 0; i < samples; ++i) {
    // In the middle of each part: a file's head is often more orderly than what follows.
    const std::uint64_t middle = size / samples * i + size / samples / 2;
    const std::string bytes = file.Sample(middle - std::min<std::uint64_t>(middle, kSample / 2), kSample);
    before += bytes.size();
    after += ZSTD_compressCCtx(fContext.get(), fRoom.data(), fRoom.size(), bytes.data(), bytes.size(), 1);
  }
  return after * 100 >= before * 97;
}

std::vector<bool> FindDense(const std::vector<TreeItem>& items) {
  using Range = std::pair<std::size_t, std::size_t>;
  constexpr std::size_t kBatch = 64;
  const auto look = [&items](Probe& probe, const Range& range) {
    std::vector<bool> found;
    for (std::size_t i = range.first; i < range.second; ++i) {
      const bool file = items[i].kind == Kind::kFile && items[i].size >= kSmallest;
      found.push_back(file && probe.IsDense(InputFile(items[i]), items[i].size));
    }
    return found;
  };
  std::vector<bool> dense;
  const std::size_t workers = CountWorkers(1 << 20);
  Crew<Probe, Range, std::vector<bool>> crew(
      workers, 4 * workers, std::make_unique<Probe>, look,
      [&dense](const std::vector<bool>& found) { dense.insert(dense.end(), found.begin(), found.end()); });
  for (std::size_t begin = 0; begin < items.size(); begin += kBatch)
    crew.Put({begin, std::min(begin + kBatch, items.size())});
  crew.Finish();
  return dense;
}

}  // namespace pack
