// SPDX-License-Identifier: MIT
#include "base/Scramble.h"

#include <bit>
#include <cstring>

namespace {

/// Taken as a 16-bit number, low byte first, each pair has its second byte on top, where an overflow falls
/// off: one addition does both bytes.
void Shift(char* bytes, std::size_t count, std::uint64_t place, unsigned char by) {
  static_assert(std::endian::native == std::endian::little);
  if (place % 2 == 1 && count > 0) {
    *bytes = static_cast<char>(static_cast<unsigned char>(*bytes) + by);
    ++bytes;
    --count;
  }
  const auto add = static_cast<std::uint16_t>(by << 8U);
  for (std::size_t i = 0; i + 1 < count; i += 2) {
    std::uint16_t pair = 0;
    std::memcpy(&pair, bytes + i, sizeof pair);
    pair = static_cast<std::uint16_t>(pair + add);
    std::memcpy(bytes + i, &pair, sizeof pair);
  }
}

}  // namespace

void ScrambleBytes(char* bytes, std::size_t count, std::uint64_t place) {
  Shift(bytes, count, place, 1);
}

void UnscrambleBytes(char* bytes, std::size_t count, std::uint64_t place) {
  constexpr unsigned char kMinusOne = 255;  // modulo 256
  Shift(bytes, count, place, kMinusOne);
}
