// SPDX-License-Identifier: MIT
// A picture in memory.
#pragma once

#include <cstdint>
#include <vector>

struct Picture {
  int width = 0;
  int height = 0;
  /// Red, green and blue, a byte each; row after row from the top, from left to right, without padding.
  std::vector<std::uint8_t> pixels;
  /// White counts as transparent.
  bool transparent = false;
};
