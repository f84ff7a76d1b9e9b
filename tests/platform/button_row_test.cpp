// SPDX-License-Identifier: MIT
// Rows of buttons with captions of any length: none covers its neighbour or leaves the window.
#include <gtest/gtest.h>

#include "platform/qt/ButtonRow.h"

namespace {

constexpr int kWindow = 396;

void ExpectInOrder(const std::vector<ButtonSpan>& row, const std::string& why) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    EXPECT_GE(row[i].left, i == 0 ? 0 : row[i - 1].left + row[i - 1].width) << why << " button " << i;
    EXPECT_GT(row[i].width, 0) << why;
  }
  EXPECT_LE(row.back().left + row.back().width, kWindow) << why;
}

}  // namespace

TEST(ButtonRow, NoCaptionPushesAButtonOverAnother) {
  for (const int info : {10, 90, 130, 200, 900}) {
    for (const int quit : {10, 90, 120, 200, 900}) {
      for (const int install : {10, 81, 110, 200, 900}) {
        const std::string why =
            std::to_string(info) + "/" + std::to_string(quit) + "/" + std::to_string(install);
        ExpectInOrder(FitButtonRow({{20, 80, info}, {204, 80, quit}, {296, 80, install}}, kWindow), why);
        ExpectInOrder(FitButtonRow({{204, 80, quit}, {296, 80, install}}, kWindow), why);
        ExpectInOrder(FitButtonRow({{296, 80, install}}, kWindow), why);
      }
    }
  }
}

TEST(ButtonRow, WhatFitsStaysAsDesignedAndWhatDoesNotGrows) {
  const std::vector<ButtonSpan> row = FitButtonRow({{20, 80, 60}, {204, 80, 60}, {296, 80, 60}}, kWindow);
  EXPECT_EQ(row[0].left, 20);
  EXPECT_EQ(row[1].left, 204);
  EXPECT_EQ(row[2].width, 80);
  const std::vector<ButtonSpan> grown = FitButtonRow({{20, 80, 60}, {204, 80, 100}, {296, 80, 110}}, kWindow);
  EXPECT_EQ(grown[2].left + grown[2].width, 376) << "the right edge stays";
  EXPECT_EQ(grown[2].width, 110);
  EXPECT_EQ(grown[1].width, 100);
  EXPECT_EQ(grown[2].left - grown[1].left - grown[1].width, 12) << "so does the gap";
}
