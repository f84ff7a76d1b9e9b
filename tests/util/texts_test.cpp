// SPDX-License-Identifier: MIT
// Searching, splitting, numbers and decoding; paths taken apart and put together.
#include "support/TestMachine.h"
#include "util/Paths.h"
#include "util/Strings.h"

using namespace ViewConst;

TEST(Paths, AreTakenApart) {
  const std::string rows[][5] = {
      {"/X/Setup.APP/Data", "/X/Setup.APP/", "/X", "Data", ""},
      {"a/b/", "a/b/", "a/b", "", ""},
      {"name", "", "", "name", ""},
      {"/d/a.tar.gz", "/d/", "/d", "a.tar.gz", ".gz"},
      {"/d/.hidden", "/d/", "/d", ".hidden", ".hidden"},
      {"Setup.app/Data", "Setup.app/", "", "Data", ""},
  };
  for (const auto& [path, folder, holder, name, extension] : rows) {
    EXPECT_EQ(ExtractFilePath(path), folder) << path;
    EXPECT_EQ(MyExtractFilePath(path), holder) << path;
    EXPECT_EQ(ExtractFileName(path), name) << path;
    EXPECT_EQ(ExtractFileExt(path), extension) << path;
    EXPECT_EQ(ChangeFileExt(path, ".zip"), path.substr(0, path.size() - extension.size()) + ".zip");
  }
}

TEST(Paths, AreTurnedAround) {
  const char* const rows[][2] = {{"/Users/a/b", "Disk:Users:a:b"},
                                 {"/Volumes/Other/a", "Other:a"},
                                 {"/Volumes/Disk/a", ":a"},
                                 {"/Volumes/Other", "Other"},
                                 {"relative/path", "relative/path"}};
  for (const auto& row : rows) EXPECT_EQ(CocoaToCarbonPath(row[0], "Disk"), row[1]) << row[0];
}

TEST(Paths, BundlesAndTheApplicationsAreFound) {
  EXPECT_EQ(ViewConst::ContentsFolder("/m/A.app/Contents/B/Contents/MacOS/Stub"), "/m/A.app/Contents");
  EXPECT_EQ(ViewConst::ContentsFolder("/m/a/contents/MacOS/Stub"), "/m/a/contents");
  EXPECT_EQ(ViewConst::ContentsFolder("/usr/bin/stub"), "/usr/bin/stub");
  EXPECT_EQ(ViewConst::BundleOf("/m/A.app/Contents/B/Contents/x"), "/m/A.app");
  const TemporaryTree tree;
  TestMachine machine(tree);
  EXPECT_EQ(MyAbsolutePath(GetApplicationFolder()), tree.Path("Applications/"));
  machine.fExecutable = "/m/Old/Contents/Setup.app/Contents/MacOS/Stub";
  EXPECT_EQ(GetApplicationPath(), "/m/Old/Contents/") << "the last bundle counts";
}

TEST(Strings, SearchesCountCharactersAndIgnoreCase) {
  const std::tuple<std::string, std::string, std::size_t, std::size_t> rows[] = {
      {"b", "ABC", 1, 2},       {"\u00C9", "caf\u00E9", 1, 4}, {"x", "\u20AC\u00E9x", 1, 3},
      {"x", "\xFF\xC3x", 1, 3}, {"\xC3", "\u00E9", 1, 0},      {"", "abc", 1, 0},
      {"a", "", 1, 0},          {"abc", "xab", 1, 0},          {"aab", "aaab", 1, 2},
      {"a", "\u00E9a", 2, 2},   {"a", "a\u00E9a", 2, 3},       {"a", "aa", 9, 0},
      {"a", "a", 0, 1},
  };
  for (const auto& [needle, text, start, position] : rows)
    EXPECT_EQ(PosAfter(needle, text, start, false), position) << needle << text;
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
  const std::pair<const char*, std::int64_t> rows[] = {{"12abc", 12}, {" \t7", 7}, {"-3.9", -3}, {"+5", 5},
                                                       {"+-5", 0},    {"", 0},     {"inf", 0}};
  for (const auto& [text, value] : rows) EXPECT_EQ(IntegerVal(text), value) << text;
  EXPECT_EQ(IntegerVal("99999999999999999999"), INT64_MAX);
  EXPECT_EQ(IntegerVal("-99999999999999999999"), INT64_MIN);
}
