// SPDX-License-Identifier: MIT
// The records, against bytes written by hand.
#include "pack/Records.h"

#include "Workshop.h"

namespace pack {
namespace {

class RecordsTest : public Workshop {};

std::string Separators(int count) {
  std::string text;
  while (count-- > 0) text += "|#|";
  return text;
}

TEST_F(RecordsTest, TheSmallestPackageHasAllFields) {
  ASSERT_EQ("", Pack(Describe()));
  // T, 0, four empty ones, 0, two empty ones, 0, 0, an empty one; every second byte raised by one.
  EXPECT_EQ(
      "T%|\x7F"
      "0%|\x7F$}~%|\x7F$}~%|\x7F"
      "0%|\x7F$}~%|\x7F"
      "0%|\x7F"
      "0%|\x7F",
      Resource("Data"));
  EXPECT_EQ(Separators(6) + "Lamp" + Separators(6) + "0" + Separators(17) + "0", Resource("TextData"));
}

TEST_F(RecordsTest, EveryKeyReachesItsField) {
  WritePng("red.png", 2, 1, {255, 0, 0, 255, 255, 0, 0, 128});
  WritePng("clear.png", 4, 4, {});
  Write("tool", "#!/bin/sh\n");
  Write("extra/x", "x");
  Write("cleaner/Contents/MacOS/cleaner", "x");
  Write("agreement.txt", "\xEF\xBB\xBFOne.\r\nTwo.\r\n");
  Write("notes.HTM", "<HTML>é");
  ASSERT_EQ("", Pack(Describe(json::parse(R"({
    "timeStamp": "now", "applicationFolder": true, "executeAfter": {"file": "tool"}, "logo": "red.png",
    "picture": "clear.png", "promptToReplace": true, "executeBefore": "UserAccount/Läufer",
    "background": "red.png", "encryptionLength": 12, "centerMessage": true,
    "agreement": {"file": "agreement.txt"}, "message": "Hi\r\n京", "url": {"address": "a.b", "text": "A B"},
    "info": "plain", "labels": {"quit": "Ende", "4": "Gut"}, "targetFolder": "A/Lamp", "copyright": "©",
    "windowTitle": "Title", "patch": true, "minOS": "macos11.0", "minRAM": "2GB", "completionURL": "http://c",
    "choices": [{"name": "Small", "folder": "extra", "target": "In/Here", "tip": "t"},
                {"name": "Big", "folder": "extra"}],
    "options": [{"name": "Web", "url": "https://x/y.zip", "tip": "w"}],
    "preInstallNotes": {"file": "notes.HTM"}, "postInstallNotes": {"html": "<html>"},
    "actions": ["delete=/tmp/x", "shell=ls; ls"],
    "cleanup": {"mode": "askDeleteFolder", "program": {"folder": "cleaner"}}
  })"))));
  EXPECT_EQ(
      "now$|~1$|~tool$|~FF0000FF7F7F,2,1$|~$|~F[96],4,4$|~1$|~UserAccount/L\x8Aufer$|~"
      "FF0000FF7F7F,2,1$|~12$|~1$|~",
      Unscrambled(Resource("Data")));
  EXPECT_EQ("One.|Two.|#|Hi\n京|#|a.b|#|A B|#|plain|#||Ende|||Gut|#|A/Lamp|#|©|#|Title" + Separators(4) +
                "1" + Separators(9) +
                "Small,Choice1.zip,In/Here,t|Big,Choice2.zip,,|#|Web,https://x/y.zip,,w" +
                "|#|macos11.0|#|2GB|#|http://c|#|$HTML$3C00480054004D004C003E00E900" +
                "|#|$HTML$3C00680074006D006C003E00|#|delete=/tmp/x|shell=ls; ls|#|4",
            Resource("TextData"));
}

TEST_F(RecordsTest, ValuesMayEndInPartsOfASeparator) {
  ASSERT_EQ("", Pack(Describe({{"message", "a|"},
                               {"copyright", "||"},
                               {"windowTitle", "#|b"},
                               {"executeBefore", "p$|"},
                               {"labels", {"", " ", ""}}})));
  EXPECT_EQ("a|", Field(Resource("TextData"), "|#|", 2));
  EXPECT_EQ("| |", Field(Resource("TextData"), "|#|", 6));
  EXPECT_EQ("||", Field(Resource("TextData"), "|#|", 8));
  EXPECT_EQ("#|b", Field(Resource("TextData"), "|#|", 9));
  EXPECT_EQ("p$|", Field(Unscrambled(Resource("Data")), "$|~", 8));
}

}  // namespace
}  // namespace pack
