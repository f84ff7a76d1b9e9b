// SPDX-License-Identifier: MIT
// Encodings, with bytes written out by hand.
#include "base/Encoding.h"

#include <gtest/gtest.h>

TEST(Encoding, TextIsRepairedByteByByteAndMacRomanCoversAllBytes) {
  const char* const rows[][2] = {
      {"caf\u00E9 \u20AC \U0001F600", "caf\u00E9 \u20AC \U0001F600"},
      {"caf\x8E!", "caf\u00E9!"},
      {"x\xE2\x82", "x\u201A\u00C7"},  // cut short at the end
      {"\xC3x", "\u221Ax"},
      {"\xC0\x80", "\u00BF\u00C4"},  // more bytes than needed
      {"\xED\xA0\x80", "\u00CC\u2020\u00C4"},
  };
  for (const auto& row : rows) EXPECT_EQ(RepairUtf8(row[0]), row[1]);
  EXPECT_EQ(CharacterCount("\u20ACa\xFF\u00E9"), 4U);
  EXPECT_EQ(MacRomanToUtf8("A\x80\x8E\xA5\xDB\xF0\xFF"), "A\u00C4\u00E9\u2022\u20AC\uF8FF\u02C7");
}
