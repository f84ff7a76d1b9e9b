// SPDX-License-Identifier: MIT
// Room for captions that are longer than the design's buttons.
#pragma once

#include <vector>

struct ButtonSpan {
  int left = 0;
  int width = 0;
  int wanted = 0;  // the width that the caption needs
};

/// Widens the buttons of one row, given from left to right, to what their captions want. Buttons that
/// stand against each other or against the right margin grow to the left from there; a button that
/// stands alone at the left grows to the right. Where the row has no room for all, each is cut back to
/// an equal share. Distances between neighbours stay.
std::vector<ButtonSpan> FitButtonRow(std::vector<ButtonSpan> row, int windowWidth);
