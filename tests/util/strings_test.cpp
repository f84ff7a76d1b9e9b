// SPDX-License-Identifier: MIT
// Searching, splitting, numbers and decoding, in tables.
#include "util/Strings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace ViewConst;

TEST(Strings, SearchesCountCharactersAndIgnoreCase) {
  const struct {
    const char* why;
    std::string needle, text;
    std::size_t start, position;
  } rows[] = {
      {"other case", "b", "ABC", 1, 2},
      {"case beyond ASCII", "\u00C9", "caf\u00E9", 1, 4},
      {"characters in front count once", "x", "\u20AC\u00E9x", 1, 3},
      {"a malformed byte is one character", "x", "\xFF\xC3x", 1, 3},
      {"half a character is no match", "\xC3", "\u00E9", 1, 0},
      {"empty needle", "", "abc", 1, 0},
      {"empty text", "a", "", 1, 0},
      {"needle longer than the rest", "abc", "xab", 1, 0},
      {"a false start", "aab", "aaab", 1, 2},
      {"start on the match", "a", "\u00E9a", 2, 2},
      {"start behind the match", "a", "a\u00E9a", 2, 3},
      {"start behind the end", "a", "aa", 9, 0},
      {"start in front of the text", "a", "a", 0, 1},
  };
  for (const auto& row : rows)
    EXPECT_EQ(PosAfter(row.needle, row.text, row.start, false), row.position) << row.why;
  EXPECT_EQ(PosAfter("b", "ABC", 1, true), 0U) << "case counts among bytes";
  EXPECT_EQ(PosAfter("a", "a\u00E9a", 2, true), 4U) << "bytes are counted";
}

TEST(Strings, EqualityIgnoresCaseAndNothingElse) {
  EXPECT_TRUE(NonCaseMatch("STRA\u00C9", "stra\u00E9"));
  EXPECT_TRUE(NonCaseMatch("", ""));
  EXPECT_FALSE(NonCaseMatch("ab", "a"));
  EXPECT_FALSE(NonCaseMatch("a", "ab"));
  EXPECT_FALSE(NonCaseMatch("\xFF", "\xFE"));
  EXPECT_TRUE(NonCaseMatch("\xFF", "\xFF"));
}

TEST(Strings, FieldsAreFoundByNumberAndValue) {
  EXPECT_EQ(FindField("a,b,c", ",", "B"), 2U);
  EXPECT_EQ(FindField("a,,c", ",", ""), 2U);
  EXPECT_EQ(FindField("ab,b", ",", "b"), 2U) << "a part of a field is no match";
  EXPECT_EQ(FindField("", ",", ""), 0U);
  EXPECT_EQ(NthField("a|#|b|#", "|#|", 2), "b|#");
  EXPECT_EQ(NthField("a,b", ",", 3), "");
  EXPECT_EQ(NthField("a,b", ",", 0), "");
}

TEST(Strings, LeadingNumbersAreHeldWithinTheirType) {
  const struct {
    const char* text;
    std::int64_t value;
  } rows[] = {{"12abc", 12},
              {" \t7", 7},
              {"-3.9", -3},
              {"+5", 5},
              {"+-5", 0},
              {"", 0},
              {"x1", 0},
              {"nan", 0},
              {"inf", 0},
              {"99999999999999999999", std::numeric_limits<std::int64_t>::max()},
              {"-99999999999999999999", std::numeric_limits<std::int64_t>::min()}};
  for (const auto& row : rows) EXPECT_EQ(IntegerVal(row.text), row.value) << row.text;
}

TEST(Strings, AreDecoded) {
  EXPECT_EQ(UnicodeFromHex("4100", true), "A");
  EXPECT_EQ(UnicodeFromHex("AC20E900", true), "\u20AC\u00E9");
  EXPECT_EQ(UnicodeFromHex("3DD800DE", true), "\U0001F600");
  EXPECT_EQ(UnicodeFromHex("3DD84100", true), "\uFFFDA") << "half a pair";
  EXPECT_EQ(UnicodeFromHex("4100420", true), "A") << "half a unit at the end";
  EXPECT_EQ(UnicodeFromHex("4100", false), "4100");
  EXPECT_EQ(ReplaceCh1WithCh2(std::string("x|X\0x", 5), 'x', '-'), "-|-") << "up to a NUL, in either case";
}
