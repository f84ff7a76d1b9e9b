// SPDX-License-Identifier: MIT
// Rows of buttons with captions of any length: none covers its neighbour or leaves the window.
#include <gtest/gtest.h>

#include "platform/qt/ButtonRow.h"

TEST(ButtonRow, WhatFitsStaysAsDesignedAndNoCaptionPushesAButtonOverAnother) {
  const std::vector<ButtonSpan> row = FitButtonRow({{20, 80, 60}, {204, 80, 100}, {296, 80, 110}}, 396);
  EXPECT_TRUE(row[0].left == 20 && row[0].width == 80);
  EXPECT_TRUE(row[2].left == 266 && row[2].width == 110) << "the right edge stays";
  EXPECT_TRUE(row[1].left == 154 && row[1].width == 100) << "so does the gap";
  for (const int info : {10, 130, 900})
    for (const int quit : {10, 120, 900})
      for (const int install : {10, 110, 900}) {
        int end = 0;
        for (const ButtonSpan& button :
             FitButtonRow({{20, 80, info}, {204, 80, quit}, {296, 80, install}}, 396)) {
          EXPECT_TRUE(button.left >= end && button.width > 0) << info << "/" << quit << "/" << install;
          end = button.left + button.width;
        }
        EXPECT_LE(end, 396);
      }
}
