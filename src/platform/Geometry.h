// SPDX-License-Identifier: MIT
// Sizes and places of windows and controls, in device-independent points.
#pragma once

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

/// Measured from the top left of the window's content.
struct Rect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  int Right() const { return left + width; }
  bool operator==(const Rect&) const = default;
};
