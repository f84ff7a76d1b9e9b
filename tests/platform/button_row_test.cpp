// SPDX-License-Identifier: MIT
// Rows of buttons with captions of any length: none covers its neighbour or leaves the window.
#include <gtest/gtest.h>

#include "platform/qt/ButtonRow.h"

constexpr int kWindow = 396;

TEST(ButtonRow, NoCaptionPushesAButtonOverAnother) {
  for (const int info : {10, 90, 130, 200, 900})
    for (const int quit : {10, 90, 120, 200, 900})
      for (const int install : {10, 81, 110, 200, 900}) {
        int end = 0;
        SCOPED_TRACE(::testing::Message() << info << "/" << quit << "/" << install);
        for (const ButtonSpan& button :
             FitButtonRow({{20, 80, info}, {204, 80, quit}, {296, 80, install}}, kWindow)) {
          EXPECT_TRUE(button.left >= end && button.width > 0);
          end = button.left + button.width;
        }
        EXPECT_LE(end, kWindow);
      }
}

TEST(ButtonRow, WhatFitsStaysAsDesignedAndWhatDoesNotGrows) {
  const std::vector<ButtonSpan> row = FitButtonRow({{20, 80, 60}, {204, 80, 100}, {296, 80, 110}}, kWindow);
  EXPECT_TRUE(row[0].left == 20 && row[0].width == 80);
  EXPECT_EQ(row[2].left + row[2].width, 376) << "the right edge stays";
  EXPECT_EQ(row[2].width, 110);
  EXPECT_EQ(row[1].width, 100);
  EXPECT_EQ(row[2].left - row[1].left - row[1].width, 12) << "so does the gap";
}
