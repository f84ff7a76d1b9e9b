// SPDX-License-Identifier: MIT
// Searching, splitting, numbers and decoding, in tables.
#include "util/Strings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace ViewConst;

TEST(Strings, SearchesCountCharactersAndIgnoreCase) {
  const struct {
    std::string needle, text;
    std::size_t start, position;
  } rows[] = {
      {"b", "ABC", 1, 2},       {"\u00C9", "caf\u00E9", 1, 4}, {"x", "\u20AC\u00E9x", 1, 3},
      {"x", "\xFF\xC3x", 1, 3}, {"\xC3", "\u00E9", 1, 0},      {"", "abc", 1, 0},
      {"a", "", 1, 0},          {"abc", "xab", 1, 0},          {"aab", "aaab", 1, 2},
      {"a", "\u00E9a", 2, 2},   {"a", "a\u00E9a", 2, 3},       {"a", "aa", 9, 0},
      {"a", "a", 0, 1},
  };
  for (const auto& row : rows)
    EXPECT_EQ(PosAfter(row.needle, row.text, row.start, false), row.position) << row.needle << row.text;
  EXPECT_EQ(PosAfter("b", "ABC", 1, true), 0U) << "case counts among bytes";
  EXPECT_EQ(PosAfter("a", "a\u00E9a", 2, true), 4U) << "bytes are counted";
}

TEST(Strings, AreComparedWholeAndSplitAtWholeSeparators) {
  EXPECT_TRUE(NonCaseMatch("STRA\u00C9\xFF", "stra\u00E9\xFF"));
  EXPECT_FALSE(NonCaseMatch("ab", "a") || NonCaseMatch("a", "ab") || NonCaseMatch("\xFF", "\xFE"));
  EXPECT_EQ(FindField("ab,B,c", ",", "b"), 2U);
  EXPECT_EQ(FindField("a,,c", ",", ""), 2U);
  EXPECT_EQ(FindField("", ",", ""), 0U);
  EXPECT_EQ(NthField("a|#|b|#", "|#|", 2), "b|#");
  EXPECT_EQ(NthField("a,b", ",", 3) + NthField("a,b", ",", 0), "");
}

TEST(Strings, LeadingNumbersAreHeldWithinTheirType) {
  using Limits = std::numeric_limits<std::int64_t>;
  const std::pair<const char*, std::int64_t> rows[] = {{"12abc", 12},
                                                       {" \t7", 7},
                                                       {"-3.9", -3},
                                                       {"+5", 5},
                                                       {"+-5", 0},
                                                       {"", 0},
                                                       {"inf", 0},
                                                       {"99999999999999999999", Limits::max()},
                                                       {"-99999999999999999999", Limits::min()}};
  for (const auto& [text, value] : rows) EXPECT_EQ(IntegerVal(text), value) << text;
}

TEST(Strings, AreDecoded) {
  EXPECT_EQ(UnicodeFromHex("AC20E900", true), "\u20AC\u00E9");
  EXPECT_EQ(UnicodeFromHex("3DD800DE", true), "\U0001F600");
  EXPECT_EQ(UnicodeFromHex("3DD84100", true), "\uFFFDA") << "half a pair";
  EXPECT_EQ(UnicodeFromHex("4100420", true), "A") << "half a unit at the end";
  EXPECT_EQ(UnicodeFromHex("4100", false), "4100");
  EXPECT_EQ(ReplaceCh1WithCh2(std::string("x|X\0x", 5), 'x', '-'), "-|-") << "up to a NUL, in either case";
}
