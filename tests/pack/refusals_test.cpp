// SPDX-License-Identifier: MIT
// What can't be packed, and the field that the answer names.
#include <sys/stat.h>

#include "Workshop.h"

namespace pack {
namespace {

struct Row {
  const char* says;  // how the sentence begins
  const char* json;  // merged into a description that is fine
};

// Values that a record can't hold.
constexpr Row kValues[] = {
    {"message can't hold \"|#|\"", R"({"message": "a|#|b"})"},
    {"message makes up a separator", R"({"message": "a|#"})"},
    {"copyright makes up a separator", R"({"copyright": "|#"})"},
    {"timeStamp can't hold \"$|~\"", R"({"timeStamp": "$|~"})"},
    {"executeAfter can't hold \"$|~\"", R"({"executeAfter": "a$|~b"})"},
    {"executeBefore holds a character that Mac Roman lacks", R"({"executeBefore": "京"})"},
    {"labels[1] can't hold \"|\"", R"({"labels": {"quit": "a|b"}})"},
    {"labels can't hold \"|#|\"", R"({"labels": ["", "#", ""]})"},
    {"labels makes up a separator", R"({"labels": ["", "#"]})"},
    {"actions[1] can't hold \"|\"", R"({"actions": ["a=b", "shell=a|b"]})"},
    {"actions[0] can't hold a second \"=\"", R"({"actions": ["shell=A=1 b"]})"},
    {"actions[0] must be a key", R"({"actions": [""]})"},
    {"actions[0] must be a key", R"({"actions": ["delete="]})"},
    {"options[0].name can't hold a comma", R"({"options": [{"name": "a,b", "folder": "payload"}]})"},
    {"options[0].tip can't hold a comma", R"({"options": [{"name": "a", "folder": "payload", "tip": "|"}]})"},
    {"options[0].url can't hold a comma", R"({"options": [{"name": "a", "url": "http://x/a,b.zip"}]})"},
    {"choices[0].target can't hold a comma",
     R"({"choices": [{"name": "a", "folder": "payload", "target": "b,c"}]})"},
    {"choices has more than ten items", R"({"choices": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11]})"},
    {"info can't hold a NUL", R"({"info": "a\u0000b"})"},
    {"agreement is plain text that holds <HTML>", R"({"agreement": "<html>"})"},
    {"labels has more than 27 texts",
     R"({"labels": [1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,7,8]})"},
};

// Names that would lead an install astray.
constexpr Row kTargets[] = {
    {"targetFolder must name a folder", R"({"targetFolder": null})"},
    {"targetFolder must name a folder", R"({"targetFolder": ""})"},
    {"targetFolder can't have \".\"", R"({"targetFolder": "."})"},
    {"targetFolder can't have \"..\"", R"({"targetFolder": ".."})"},
    {"targetFolder can't have \"..\"", R"({"targetFolder": "a/../b"})"},
    {"targetFolder can't have \"\"", R"({"targetFolder": "a/"})"},
    {"targetFolder can't begin with \"/\"", R"({"targetFolder": "/a"})"},
    {"targetFolder can't hold a control character", R"({"targetFolder": "a\nb"})"},
    {"choices[0].target can't have \"..\"",
     R"({"choices": [{"name": "a", "folder": "payload", "target": "../b"}]})"},
};

// Slips: wrong types, unknown keys, missing files, contradictions.
constexpr Row kSlips[] = {
    {"titel is no key", R"({"titel": "x"})"},
    {"payload.file is no key", R"({"payload": {"file": "x"}})"},
    {"choices[0].url is no key", R"({"choices": [{"name": "a", "folder": "payload", "url": "http://x/y"}]})"},
    {"message must be a string", R"({"message": 1})"},
    {"patch must be true or false", R"({"patch": 1})"},
    {"encryptionLength must be a whole number", R"({"encryptionLength": 1.5})"},
    {"encryptionLength must be a whole number", R"({"encryptionLength": 18446744073709551615})"},
    {"cleanup.mode must be a whole number from 0 to 4", R"({"cleanup": {"mode": 5}})"},
    {"cleanup.mode must be a number", R"({"cleanup": {"mode": "burn"}})"},
    {"cleanup.program is missing", R"({"cleanup": {"mode": 1}})"},
    {"cleanup.program.folder names no application bundle",
     R"({"cleanup": {"mode": 1, "program": {"folder": "payload"}}})"},
    {"labels.quitt is no label's name", R"({"labels": {"quitt": "x"}})"},
    {"labels.27 is no label's name", R"({"labels": {"27": "x"}})"},
    {"labels.quit is given both", R"({"labels": {"1": "x", "quit": "x"}})"},
    {"agreement.file names no file", R"({"agreement": {"file": "none.txt"}})"},
    {"message is no UTF-8 text", R"({"message": {"file": "latin"}})"},
    {"logo names no PNG", R"({"logo": "latin"})"},
    {"picture has more than 8333333 pixels", R"({"picture": "huge.png"})"},
    {"payload is missing", R"({"payload": null})"},
    {"payload.folder names no folder", R"({"payload": {"folder": "none"}})"},
    {"payload.folder names a folder that holds nothing", R"({"payload": {"folder": "empty"}})"},
    {"payload.folder holds something that is no file", R"({"payload": {"folder": "odd"}})"},
    {"payload.folder holds the bundle", R"({"payload": {"folder": "out"}})"},
    {"payload.zip names a file that is no zip", R"({"payload": {"folder": null, "zip": "latin"}})"},
    {"payload.splitSizes must hold", R"({"payload": {"splitSizes": [0]}})"},
    {"payload.splitSize must be", R"({"payload": {"splitSize": 0}})"},
    {"choices[0].folder is missing", R"({"choices": [{"name": "a"}]})"},
    {"options[1].name is the name of an earlier item",
     R"({"options": [{"name": "a", "folder": "payload"}, {"name": "A", "folder": "payload"}]})"},
    {"options[0].url must be an http address", R"({"options": [{"name": "a", "url": "ftp://x/y"}]})"},
    {"minOS is none of the known ones", R"({"minOS": "MacOS9"})"},
    {"executeBefore must be a file's name", R"({"executeBefore": "Tools/x"})"},
    {"executeAfter has the name of another file", R"({"executeAfter": {"name": "Data2", "file": "latin"}})"},
};

class Refusals : public Workshop {
 protected:
  template <std::size_t N>
  void Check(const Row (&rows)[N]) {
    for (const Row& row : rows) {
      const std::string sentence = Pack(Describe(json::parse(row.json)));
      EXPECT_TRUE(sentence.starts_with(row.says)) << row.json << "\n  " << sentence;
      EXPECT_TRUE(fs::is_empty(root / "out")) << row.json;
    }
  }
};

TEST_F(Refusals, ValuesThatARecordCannotHold) {
  Check(kValues);
}
TEST_F(Refusals, TargetsThatLeadAstray) {
  Check(kTargets);
}

TEST_F(Refusals, SlipsOfThePen) {
  Write("latin", "Gr\xFC\xDF");
  WritePng("huge.png", 8334, 1000, {});
  fs::create_directories(root / "empty");
  fs::create_directories(root / "odd");
  ASSERT_EQ(0, ::mkfifo((root / "odd/fifo").c_str(), 0600));
  Check(kSlips);
}

TEST_F(Refusals, TextThatIsNoJsonNamesTheLine) {
  Write("bad.json", "{\n  \"message\": \"a\"\n  \"patch\": true\n}\n");
  Write("twins.json", R"({"payload": {"zip": "a"}, "url": {"text": "a", "text": "b"}})");
  const auto sentence = [&](const char* file) -> std::string {
    try {
      ReadDescription(root / file);
    } catch (const Refusal& refusal) {
      return refusal.what();
    }
    return "";
  };
  EXPECT_NE(std::string::npos, sentence("bad.json").find("line 3"));
  EXPECT_EQ("text stands twice in one object.", sentence("twins.json"));
  EXPECT_NE("", sentence("absent.json"));
}

}  // namespace
}  // namespace pack
