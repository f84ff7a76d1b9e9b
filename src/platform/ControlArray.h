// SPDX-License-Identifier: MIT
// Controls of one kind that stand in a column, told apart by their index.
#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "platform/Controls.h"

template <typename Kind>
class ControlArray {
 public:
  /// `count` controls, "Name0", "Name1" and so on, each `distance` points below the one before it.
  ControlArray(Window& window, const std::string& name, int count, Rect place, int distance,
               const std::string& caption) {
    for (int i = 0; i < count; ++i, place.top += distance)
      fControls.emplace_back(window, name + std::to_string(i), place, caption);
  }
  Kind& operator[](std::size_t index) { return fControls[index]; }
  std::size_t Count() const { return fControls.size(); }

 private:
  std::deque<Kind> fControls;  // which stay where they were made
};
