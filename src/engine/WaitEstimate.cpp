// SPDX-License-Identifier: MIT
#include "engine/WaitEstimate.h"

std::int64_t EstimateTicks(std::uint64_t size, bool slowSystem) {
  constexpr std::uint64_t kUnit = 3'000'000;
  constexpr std::int64_t kTicksPerUnit = 30;
  constexpr std::uint64_t kMedium = 30'000'000;
  constexpr std::uint64_t kLarge = 300'000'000;
  std::int64_t ticks = static_cast<std::int64_t>(size / kUnit + 1) * kTicksPerUnit;
  if (slowSystem) ticks *= 2;
  if (size > kLarge) return ticks / 4;
  if (size > kMedium) return ticks / 2;
  return ticks;
}
