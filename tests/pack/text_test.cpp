// SPDX-License-Identifier: MIT
// Encodings, run lengths, scrambling and the cutting of split sets: pure functions.
#include "pack/Text.h"

#include <gtest/gtest.h>

#include "pack/Notes.h"
#include "pack/Picture.h"
#include "pack/Refusal.h"
#include "pack/Scramble.h"

namespace pack {
namespace {

using std::string_literals::operator""s;

TEST(Text, BytesThatAreNoUtf8AreTold) {
  const char* const kBad[] = {"\x80",       "\xC0\x80",         "\xC3",
                              "\xC3(",      "\xED\xA0\x80",     "\xF4\x90\x80\x80",
                              "\xE4\xBA x", "\xF0\x80\x80\x80", "\xFF"};
  for (const char* text : kBad) EXPECT_FALSE(DecodeUtf8(text)) << text;
  EXPECT_EQ(U"aé京🏮", DecodeUtf8("aé京🏮"));
}

TEST(Text, MacRomanHasItsOwnBytes) {
  EXPECT_EQ("A\x80\x8A\xA7\xA9\xDB\xFF", ToMacRoman("AÄäß©€ˇ"));
  EXPECT_FALSE(ToMacRoman("ō"));
  EXPECT_FALSE(ToMacRoman("\xC2\x80"));
}

TEST(Text, HexadecimalUnitsAreLittleEndian) {
  EXPECT_EQ("41000A00", ToHexUtf16("A\n"));
  EXPECT_EQ("AC4E", ToHexUtf16("京"));
  EXPECT_EQ("3CD8EEDF", ToHexUtf16("🏮"));
}

TEST(Text, EveryKindOfLineEndBecomesALineFeed) {
  EXPECT_EQ("a\nb\n\nc\n", WithLineFeeds("a\r\nb\r\rc\r"));
}

struct NoteRow {
  const char* why;
  const char* text;
  bool html;
  const char* field;
};

TEST(Notes, ThePlainFormIsKeptForWhatComesBackUnchanged) {
  const NoteRow kRows[] = {
      {"no note", "", false, ""},
      {"no page either", "", true, ""},
      {"line ends", "a\n\nb\n", false, "a||b|"},
      {"beyond ASCII", "é", false, "$HTML$E900"},
      {"a bar of its own", "|", false, "$HTML$7C00"},
      {"a separator out of line ends", "\n#\n", false, "$HTML$0A0023000A00"},
      {"a separator with the next field's", "\n#", false, "$HTML$0A002300"},
      {"a separator with the last field's", "#\n", false, "$HTML$23000A00"},
      {"the mark itself, in any case", "$html$", false, "$HTML$2400680074006D006C002400"},
      {"a page", "<html>", true, "$HTML$3C00680074006D006C003E00"},
      {"a page that lacks the tag", "i", true,
       "$HTML$3C00480054004D004C003E000A0069000A003C002F00480054004D004C003E00"},
  };
  for (const NoteRow& row : kRows) EXPECT_EQ(row.field, NoteField("info", {row.text, row.html})) << row.why;
  EXPECT_THROW(NoteField("info", {"see <Html>", false}), Refusal);
}

TEST(Picture, RunsAreShortenedOnlyWhereItSaves) {
  const struct {
    const char* digits;
    const char* shortened;
  } kRows[] = {{"", ""},
               {"000000FF", "0[6]FF"},
               {"0000F", "0000F"},
               {"00000F", "0[5]F"},
               {"FFFFFFFFFFFF", "F[12]"},
               {"0FFFFFFFFFF", "0F[10]"}};
  for (const auto& row : kRows) EXPECT_EQ(row.shortened, ShortenRuns(row.digits));
}

TEST(Scramble, EverySecondByteIsRaisedAndWraps) {
  EXPECT_EQ("", Scramble(""));
  EXPECT_EQ("A", Scramble("A"));
  EXPECT_EQ("ABABA", Scramble("AAAAA"));
  EXPECT_EQ("\xFF\0\xFF\x01"s, Scramble("\xFF\xFF\xFF\0"s));
}

std::string Plan(std::uintmax_t total, const Split& split) {
  std::string plan;
  for (const Piece& piece : PlanPieces(total, split))
    plan += piece.name + ":" + std::to_string(piece.size) + " ";
  return plan;
}

TEST(Scramble, ASplitSetEndsInItsNamedLastPiece) {
  EXPECT_EQ("Data2:10 ", Plan(10, {}));
  EXPECT_EQ("Data2:10 ", Plan(10, {{10}, true}));
  EXPECT_EQ("Data#1:9 Data#End:1 ", Plan(10, {{9}, true}));
  EXPECT_EQ("Data#1:5 Data#End:5 ", Plan(10, {{5}, true}));
  EXPECT_EQ("Data#1:4 Data#2:4 Data#End:2 ", Plan(10, {{4}, true}));
  EXPECT_EQ("Data#1:4 Data#End:6 ", Plan(10, {{4}, false}));
  EXPECT_EQ("Data#1:4 Data#2:3 Data#End:3 ", Plan(10, {{4, 3, 9}, false}));
  EXPECT_THROW(PlanPieces(1'000'000, {{1}, true}), Refusal);
}

}  // namespace
}  // namespace pack
