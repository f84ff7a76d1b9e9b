// SPDX-License-Identifier: MIT
// The two records: every field at its place, and no record too short, too long or too strange.
#include <gtest/gtest.h>

#include "package/InstallerRecord.h"
#include "package/Notes.h"
#include "support/TestPackage.h"

TEST(Record, EveryFieldIsReadFromItsPlace) {
  TestPackage package;
  package.data = {{1, "stamp"},     {2, "1"}, {3, "After"},   {4, "ABC,64,32"},    {5, "-"},
                  {6, "DEF,8,9.7"}, {7, "1"}, {8, "Caf\x8E"}, {9, "4(0),396,238"}, {10, "77x"},
                  {11, "1"},        {12, "-"}};
  for (int n = 1; n <= 30; ++n) package.textData[n] = "text" + std::to_string(n);
  for (const int note : {1, 5, 27, 28}) package.textData[note] += "|";
  package.textData[6] = "zero||two| |";
  package.textData[13] = "1";
  package.textData[30] = "2";
  const InstallerRecord r =
      ParseRecord(package.DataRecord() + "$|~extra", package.TextDataRecord() + "|#|extra");
  EXPECT_TRUE(r.fApplicationFolder && r.fPromptToReplace && r.fCenterMessage && r.fInstallationPatch);
  EXPECT_EQ((std::vector{r.fLogoWidth, r.fLogoHeight, r.fPictureWidth, r.fPictureHeight, r.fBackgroundWidth,
                         r.fBackgroundHeight, r.fEncryptionLen, r.fCleanup}),
            (std::vector<std::int64_t>{64, 32, 8, 9, 396, 238, 77, 2}));
  EXPECT_EQ(r.fTimeStamp + " " + r.fExecuteAfterName + " " + r.fLogoPixelStr + " " + r.fPicturePixelStr +
                " " + r.fBackgroundPixelStr + " " + r.fExecuteBeforeName + " " + r.fAgreement + " " +
                r.fMessage + " " + r.fURLActual + " " + r.fURLDisplayed + " " + r.fInfo + " " +
                r.fTargetFolder + " " + r.fCopyright + " " + r.fWindowTitle + " " + r.fInstallChoices + " " +
                r.fInstallOptions + " " + r.fMinOS + " " + r.fMinRAM + " " + r.fCompletionURL + " " +
                r.fPreInstallNotes + " " + r.fPostInstallNotes + " " + r.fPostCopy,
            "stamp After ABC DEF 4(0) Caf\u00E9 text1\n text2 text3 text4 text5\n text7 text8 text9 text22 "
            "text23 text24 text25 text26 text27\n text28\n text29");
  EXPECT_EQ(r.fLabels, (std::vector<std::string>{"zero", "", "two", " ", ""}));
  EXPECT_EQ(r.LabelText(LabelId::Cancel) + r.LabelText(LabelId::PostInstallNotesTitle), " ");
}

TEST(Record, ShortAndStrangeRecordsReadAsFarAsTheyGo) {
  EXPECT_TRUE(ParseRecord("", "").fTargetFolder.empty());
  EXPECT_EQ(ParseRecord("", "|#||#||#||#||#|" + std::string(1000, '|')).fLabels.size(), 27U);
  for (const char* flag : {"2", "true", " 1", "01"})
    EXPECT_FALSE(ParseRecord("x$|~" + std::string(flag), "").fApplicationFolder) << flag;
  const InstallerRecord picture = ParseRecord("$|~$|~$|~ABC,64", "");
  EXPECT_TRUE(picture.fLogoPixelStr == "ABC" && picture.fLogoWidth == 64 && picture.fLogoHeight == 0);
  EXPECT_EQ(ParseRecord("a$|b|~c$$|~1", "").fTimeStamp, "a$|b|~c$") << "half a separator is text";
}

TEST(Record, NotesAreWrittenPlainWhereTheyComeBack) {
  const char* const rows[][2] = {{"", ""},
                                 {"a\n\nb\n", "a||b|"},
                                 {"\u4EAC\U0001F3EE", "$HTML$AC4E3CD8EEDF"},
                                 {"|", "$HTML$7C00"},
                                 {"\n#\n", "$HTML$0A0023000A00"},
                                 {"\n#", "$HTML$0A002300"},  // a separator with the bar of the next field's
                                 {"#\n", "$HTML$23000A00"},
                                 {"$html$", "$HTML$2400680074006D006C002400"},
                                 {"<html>", "$HTML$3C00680074006D006C003E00"}};
  for (const auto& [note, field] : rows) {
    EXPECT_EQ(EncodeNote(note), field);
    EXPECT_EQ(DecodeNote(field), note);
  }
}

TEST(Record, NotesAreDecodedByTheirForm) {
  const char* const rows[][2] = {{"", ""},
                                 {"one|caf\u00E9||", "one\ncaf\u00E9\n\n"},
                                 {"<HTML>|</HTML>", "<HTML>\n</HTML>"},
                                 {"$HTML$", ""},
                                 {"$HTML$3C004800540E", "<H\u0E54"},
                                 {"$html$4100", "A"},
                                 {"$HTML$3DD800DE", "\U0001F600"},
                                 {"$HTML$3DD84100", "\uFFFDA"},
                                 {"$HTML$4100420", "A"}};
  for (const auto& row : rows) EXPECT_EQ(DecodeNote(row[0]), row[1]) << row[0];
  EXPECT_EQ(DecodeNote(std::string_view("|X\0x", 4)), "\nX") << "up to a NUL";
  EXPECT_EQ(DecodeNote("x$HTML$4"), DecodeNote("$HTML$$4")) << "six characters go, wherever the mark stands";
}
