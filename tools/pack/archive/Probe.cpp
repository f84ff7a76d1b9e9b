// SPDX-License-Identifier: MIT
// Samples through the fastest compression.
#include "pack/archive/Probe.h"

#include <zstd.h>

#include <algorithm>
#include <cstddef>
#include <new>

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

}  // namespace pack
