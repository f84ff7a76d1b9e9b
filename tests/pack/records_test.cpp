// SPDX-License-Identifier: MIT
// The records, their encodings and the cutting of split sets, against bytes written by hand.
#include <png.h>

#include "Workshop.h"
#include "base/Encoding.h"
#include "pack/Scramble.h"

namespace pack {

using std::string_literals::operator""s;

class RecordsTest : public Workshop {
 protected:
  static std::string Separators(int count) { return count == 0 ? "" : "|#|" + Separators(count - 1); }

  void WritePng(const std::string& name, unsigned width, unsigned height, std::vector<png_byte> rgba) const {
    png_image image{nullptr, PNG_IMAGE_VERSION, width, height, PNG_FORMAT_RGBA, 0, 0, 0, {}};
    rgba.resize(PNG_IMAGE_SIZE(image));
    ASSERT_NE(0, png_image_write_to_file(&image, Path(name).c_str(), 0, rgba.data(), 0, nullptr));
  }
};

TEST_F(RecordsTest, TheSmallestPackageHasAllFields) {
  ASSERT_EQ("", Pack());
  // T, 0, four empty ones, 1, two empty ones, 0, 0, an empty one; every second byte raised by one.
  EXPECT_EQ("T%|\1770%|\177$}~%|\177$}~%|\1771%|\177$}~%|\1770%|\1770%|\177", Resource("Data"));
  EXPECT_EQ(Separators(6) + "Lamp" + Separators(6) + "0" + Separators(17) + "0", Resource("TextData"));
}

TEST_F(RecordsTest, EveryKeyReachesItsField) {
  WritePng("red.png", 2, 1, {255, 0, 0, 255, 255, 0, 0, 128});
  WritePng("clear.png", 4, 4, {});
  WritePng("huge.png", 8334, 1000, {});
  Write("tool", "#!/bin/sh\n", 0755);
  Write("extra/x", "x");
  Write("cleaner/Contents/MacOS/cleaner", "x");
  Write("agreement.txt", "\xEF\xBB\xBFOne.\rTwo.\r\n");
  Write("notes.HTM", "<HTML>é");
  const json all = json::parse(R"({
    "timeStamp": "now", "applicationFolder": true, "executeAfter": {"file": "tool"}, "logo": "red.png",
    "picture": "clear.png", "promptToReplace": true, "executeBefore": "UserAccount/Läufer",
    "background": "red.png", "encryptionLength": 12, "centerMessage": true,
    "agreement": {"file": "agreement.txt"}, "message": "Hi\r\n京", "url": {"address": "a.b", "text": "A B"},
    "info": "plain", "labels": {"quit": "Ende", "4": "Gut"}, "targetFolder": "A/Lamp", "copyright": "©",
    "windowTitle": "Title", "minOS": "macos11.0", "minRAM": "2GB", "completionURL": "http://c",
    "choices": [{"name": "Small", "folder": "extra", "target": "In/Here", "tip": "t"},
                {"name": "Big", "folder": "extra"}],
    "options": [{"name": "Web", "url": "https://x/y.zip", "tip": "w"}],
    "preInstallNotes": {"file": "notes.HTM"}, "postInstallNotes": {"html": "<html>"},
    "actions": ["delete=/tmp/x", "shell=ls; ls"],
    "cleanup": {"mode": "askDeleteFolder", "program": {"folder": "cleaner"}}
  })");
  ASSERT_EQ("", Pack(all));
  EXPECT_EQ(
      "now$|~1$|~tool$|~FF0000FF7F7F,2,1$|~$|~F[96],4,4$|~1$|~UserAccount/L\x8Aufer$|~"
      "FF0000FF7F7F,2,1$|~12$|~1$|~",
      Unscrambled(Resource("Data")));
  EXPECT_EQ("One.|Two.|#|Hi\n京|#|a.b|#|A B|#|plain|#||Ende|||Gut|#|A/Lamp|#|©|#|Title" + Separators(4) +
                "0" + Separators(9) +
                "Small,Choice1.zip,In/Here,t|Big,Choice2.zip,,|#|Web,https://x/y.zip,,w" +
                "|#|macos11.0|#|2GB|#|http://c|#|$HTML$3C00480054004D004C003E00E900" +
                "|#|$HTML$3C00680074006D006C003E00|#|delete=/tmp/x|shell=ls; ls|#|4",
            Resource("TextData"));
  EXPECT_TRUE(Pack({{"picture", "huge.png"}}).starts_with("picture has more than 8333333 pixels"));
}

TEST_F(RecordsTest, ValuesMayEndInPartsOfASeparator) {
  Write("p$|", "#!/bin/sh\n", 0755);
  ASSERT_EQ("", Pack({{"message", "a|"},
                      {"copyright", "||"},
                      {"windowTitle", "#|b"},
                      {"executeBefore", {{"file", "p$|"}}},
                      {"labels", {"", " ", ""}}}));
  const std::string texts = Resource("TextData");
  EXPECT_EQ("a| | | || #|b", Field(texts, "|#|", 2) + " " + Field(texts, "|#|", 6) + " " +
                                 Field(texts, "|#|", 8) + " " + Field(texts, "|#|", 9));
  EXPECT_EQ("p$|", Field(Unscrambled(Resource("Data")), "$|~", 8));
  EXPECT_EQ("\xFF\0\xFF\x01"s, Scramble("\xFF\xFF\xFF\0"s)) << "a raised byte wraps";
}

TEST(Text, WhatAnEncodingCannotHoldIsTold) {
  for (const char* text : {"\x80", "\xC0\x80", "\xC3", "\xC3(", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                           "\xE4\xBA x", "\xF0\x80\x80\x80"})
    EXPECT_FALSE(IsUtf8(text)) << text;
  EXPECT_TRUE(IsUtf8("aé京🏮"));
  EXPECT_EQ("A\x80\x8A\xA7\xA9\xDB\xFF", Utf8ToMacRoman("AÄäß©€ˇ"));
  EXPECT_FALSE(Utf8ToMacRoman("ō"));
  EXPECT_FALSE(Utf8ToMacRoman("\xC2\x80"));
}

static std::string Plan(std::uintmax_t total, const Split& split) {
  std::string plan;
  for (const Piece& piece : PlanPieces(total, split))
    plan += piece.name + ":" + std::to_string(piece.size) + " ";
  return plan;
}

TEST(Text, ASplitSetEndsInItsNamedLastPiece) {
  EXPECT_EQ("Data2:10 ", Plan(10, {{10}, true}));
  EXPECT_EQ("Data#1:9 Data#End:1 ", Plan(10, {{9}, true}));
  EXPECT_EQ("Data#1:5 Data#End:5 ", Plan(10, {{5}, true}));
  EXPECT_EQ("Data#1:4 Data#2:4 Data#End:2 ", Plan(10, {{4}, true}));
  EXPECT_EQ("Data#1:4 Data#End:6 ", Plan(10, {{4}, false}));
  EXPECT_EQ("Data#1:4 Data#2:3 Data#End:3 ", Plan(10, {{4, 3, 9}, false}));
  EXPECT_THROW(PlanPieces(1'000'000, {{1}, true}), Refusal);
}

}  // namespace pack
