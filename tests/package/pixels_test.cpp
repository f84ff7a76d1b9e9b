// SPDX-License-Identifier: MIT
// Pixel strings: runs, damage, and pictures of a stated size.
#include <gtest/gtest.h>

#include "package/PixelStrings.h"

TEST(Pixels, AreDecodedInOnePassAndRefusedWhenDamaged) {
  const char* const rows[][2] = {
      {"ABC", "ABC"}, {"A[3]B[2]", "AAABB"}, {"XA[3]YB[2]Z", "XAAAYBBZ"}, {"A[0]", ""}, {"A[]", ""}};
  for (const auto& row : rows) {
    std::string pixels = row[0];
    EXPECT_TRUE(PixelStringExpand(pixels));
    EXPECT_EQ(pixels, row[1]);
  }
  for (const char* damaged : {"[3]", "A[3", "A[3][2]", "A[50000001]", "A[30000000]B[30000000]"}) {
    std::string pixels = damaged;
    EXPECT_FALSE(PixelStringExpand(pixels)) << damaged;
    EXPECT_EQ(pixels, damaged);
    EXPECT_FALSE(DecodePicture(1, 1, damaged)) << damaged;
  }
  const auto picture = DecodePicture(2, 1, "1F[3]2[3]A0[2]30");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels, (std::vector<std::uint8_t>{0x1F, 0xFF, 0x22, 0x2A, 0x00, 0x30}))
      << "odd runs begin and end inside a byte";
  for (const auto& [width, height] : {std::pair{1, 1}, {2, 2}, {0, 1}, {-2, -1}, {1 << 30, 1 << 30}})
    EXPECT_FALSE(DecodePicture(width, height, "1F[3]2[3]A0[2]30")) << width;
}

TEST(Pixels, RunsAreShortenedOnlyWhereItSaves) {
  const char* const rows[][2] = {{"", ""},   {"000000FF", "0[6]FF"},   {"0000F", "0000F"}, {"00000", "0[5]"},
                                 {"0", "0"}, {"0FFFFFFFFFF", "0F[10]"}};
  for (const auto& row : rows) EXPECT_EQ(PixelStringShorten(row[0]), row[1]);
}
