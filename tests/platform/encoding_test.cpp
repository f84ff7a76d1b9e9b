// SPDX-License-Identifier: MIT
// Encodings, with bytes written out by hand.
#include "platform/Encoding.h"

#include <gtest/gtest.h>

TEST(Encoding, TextIsRepairedByteByByte) {
  const struct {
    const char* why;
    const char* bytes;
    const char* text;
  } rows[] = {
      {"well formed stays", "caf\u00E9 \u20AC \U0001F600", "caf\u00E9 \u20AC \U0001F600"},
      {"a byte of Mac Roman", "caf\x8E!", "caf\u00E9!"},
      {"a sequence cut short at the end", "x\xE2\x82", "x\u201A\u00C7"},
      {"a sequence cut short by a letter", "\xC3x", "\u221Ax"},
      {"a stray continuation", "\x80x", "\u00C4x"},
      {"more bytes than needed", "\xC0\x80", "\u00BF\u00C4"},
      {"a surrogate", "\xED\xA0\x80", "\u00CC\u2020\u00C4"},
      {"beyond the last character", "\xF4\x90\x80\x80", "\u00D9\u00EA\u00C4\u00C4"},
  };
  for (const auto& row : rows) EXPECT_EQ(RepairUtf8(row.bytes), row.text) << row.why;
}

TEST(Encoding, MacRomanCoversAllBytes) {
  EXPECT_EQ(MacRomanToUtf8("A\x80\x8E\xA5\xDB\xF0\xFF"), "A\u00C4\u00E9\u2022\u20AC\uF8FF\u02C7");
  EXPECT_EQ(MacRomanToUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(CharacterCount("\u20ACa\xFF\u00E9"), 4U);
  for (char32_t character : {U'\u007F', U'\u0080', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000'}) {
    std::string text;
    AppendUtf8(text, character);
    std::size_t at = 0;
    EXPECT_EQ(NextCharacter(text, at), character);
    EXPECT_EQ(at, text.size());
  }
}
