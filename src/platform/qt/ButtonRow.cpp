// SPDX-License-Identifier: MIT
#include "platform/qt/ButtonRow.h"

#include <algorithm>

namespace {

constexpr int kGap = 12;     // between neighbours, as designed
constexpr int kMargin = 24;  // the widest distance to the edge that still counts as standing at it

int Right(const ButtonSpan& span) {
  return span.left + span.width;
}

/// The first button of the group that stands at the right margin.
std::size_t RightGroup(const std::vector<ButtonSpan>& row, int windowWidth) {
  std::size_t first = row.size();
  int edge = windowWidth;
  while (first > 0 && edge - Right(row[first - 1]) <= (first == row.size() ? kMargin : kGap + 4)) {
    --first;
    edge = row[first].left;
  }
  return first;
}

}  // namespace

std::vector<ButtonSpan> FitButtonRow(std::vector<ButtonSpan> row, int windowWidth) {
  if (row.empty()) return row;
  const std::size_t rightFirst = RightGroup(row, windowWidth);
  const int margin = std::min(row.front().left, windowWidth - Right(row.back()));
  const int room = windowWidth - 2 * std::max(margin, 0) - kGap * static_cast<int>(row.size() - 1);
  int wanted = 0;
  for (const ButtonSpan& span : row) wanted += std::max(span.width, span.wanted);
  const int share = wanted <= room ? wanted : room / static_cast<int>(row.size());
  const auto grown = [share](const ButtonSpan& span) {
    return std::max(std::min(std::max(span.width, span.wanted), share), std::min(span.width, share));
  };
  int edge = 0;
  for (std::size_t i = row.size(); i-- > rightFirst;) {
    const int right = i + 1 == row.size() ? Right(row[i]) : edge - kGap;
    row[i].width = grown(row[i]);
    row[i].left = right - row[i].width;
    edge = row[i].left;
  }
  for (std::size_t i = 0; i < rightFirst; ++i) {
    row[i].width = grown(row[i]);
    if (i > 0) row[i].left = std::max(row[i].left, Right(row[i - 1]) + kGap);
  }
  return row;
}
