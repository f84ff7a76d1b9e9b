// SPDX-License-Identifier: MIT
// What can't be packed, and the field that the answer names.
#include <sys/stat.h>

#include "Workshop.h"

namespace pack {

// How the sentence begins, and the members that are merged into a description that is fine.
constexpr const char* kRows[][2] = {
    // Values that a record can't hold.
    {"message can't hold \"|#|\"", R"("message": "a|#|b")"},
    {"message makes up the separator", R"("message": "a|#")"},
    {"timeStamp can't hold \"$|~\"", R"("timeStamp": "$|~")"},
    {"executeBefore can't hold \"京\", which Mac Roman lacks", R"("executeBefore": "京")"},
    {"labels[1] can't hold \"|\"", R"("labels": {"quit": "a|b"})"},
    {"labels can't hold \"|#|\"", R"("labels": ["", "#", ""])"},
    {"labels has more than 27", R"("labels": [1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,7,8])"},
    {"actions[1] can't hold \"|\"", R"("actions": ["a=b", "shell=a|b"])"},
    {"actions[0] can't hold a second \"=\"", R"("actions": ["shell=A=1 b"])"},
    {"actions[0] must be a key", R"("actions": ["delete="])"},
    {"options[0].name can't hold a comma", R"("options": [{"name": "a,b", "folder": "payload"}])"},
    {"options[0].tip can't hold a comma", R"("options": [{"name": "a", "folder": "payload", "tip": "|"}])"},
    {"options[0].url can't hold a comma", R"("options": [{"name": "a", "url": "http://x/a,b"}])"},
    {"options[0].target can't", R"("options": [{"name": "a", "folder": "payload", "target": "b,c"}])"},
    {"choices has more than ten items", R"("choices": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11])"},
    {"info can't hold a NUL", R"("info": "a\u0000b")"},
    {"agreement is plain text that holds <HTML>", R"("agreement": "<html>")"},
    // Names that would lead an install astray.
    {"targetFolder must name a folder", R"("targetFolder": "")"},
    {"targetFolder can't have \".\"", R"("targetFolder": ".")"},
    {"targetFolder can't have \"..\"", R"("targetFolder": "a/../b")"},
    {"targetFolder can't have \"\"", R"("targetFolder": "a/")"},
    {"targetFolder can't begin with \"/\"", R"("targetFolder": "/a")"},
    {"targetFolder can't hold a control character", R"("targetFolder": "a\nb")"},
    {"choices[0].target can't", R"("choices": [{"name": "a", "folder": "out", "target": "../b"}])"},
    // Slips: wrong types, unknown keys, missing files, contradictions.
    {"titel is no key", R"("titel": "x")"},
    {"choices[0].url is no key", R"("choices": [{"name": "a", "folder": "payload", "url": "http://x/y"}])"},
    {"message must be a string", R"("message": 1)"},
    {"patch must be true or false", R"("patch": 1)"},
    {"encryptionLength must be a whole number", R"("encryptionLength": 1.5)"},
    {"encryptionLength must be a whole number", R"("encryptionLength": 18446744073709551615)"},
    {"cleanup.mode must be a whole number from 0 to 4", R"("cleanup": {"mode": 5})"},
    {"cleanup.program is missing", R"("cleanup": {"mode": 1})"},
    {"cleanup.program.folder names no app", R"("cleanup": {"mode": 1, "program": {"folder": "payload"}})"},
    {"labels.quitt is no label's name", R"("labels": {"quitt": "x"})"},
    {"labels.quit is given both", R"("labels": {"1": "x", "quit": "x"})"},
    {"agreement.file names no file", R"("agreement": {"file": "none.txt"})"},
    {"message is no UTF-8 text", R"("message": {"file": "latin"})"},
    {"logo names no PNG", R"("logo": "latin")"},
    {"payload is missing", R"("payload": null)"},
    {"payload.folder names no folder", R"("payload": {"folder": "none"})"},
    {"payload.folder names a folder that holds nothing", R"("payload": {"folder": "empty"})"},
    {"payload.folder holds something that is no file", R"("payload": {"folder": "odd"})"},
    {"payload.folder holds the bundle", R"("payload": {"folder": "out"})"},
    {"payload.zip names a file that is no zip", R"("payload": {"folder": null, "zip": "latin"})"},
    {"payload.zip can't stand beside", R"("payload": {"zip": "latin"})"},
    {"options[0].url can't stand", R"("options": [{"name": "a", "zip": "latin", "url": "http://x/y"}])"},
    {"options[0].folder is missing, and so are", R"("options": [{"name": "a"}])"},
    {"choices[0].folder is missing, and so is zip", R"("choices": [{"name": "a"}])"},
    {"choices[0].name is missing", R"("choices": [{"folder": "payload"}])"},
    {"payload.compression must be \"solid\"", R"("payload": {"compression": "lzma"})"},
    {"payload.level must be", R"("payload": {"level": 9})"},
    {"payload.level can't stand beside \"store\"", R"("payload": {"compression": "store", "level": "fast"})"},
    {"payload.level can't stand without a folder",
     R"("payload": {"folder": null, "zip": "latin", "level": "best"})"},
    {"options[0].compression can't stand without",
     R"("options": [{"name": "a", "url": "http://x/y", "compression": "solid"}])"},
    {"payload.splitSizes must hold", R"("payload": {"splitSizes": [0]})"},
    {"payload.splitSize must be", R"("payload": {"splitSize": 0})"},
    {"options[1].name is", R"("options": [{"name": "a", "folder": "out"}, {"name": "A", "folder": "out"}])"},
    {"options[0].url must be an http address", R"("options": [{"name": "a", "url": "ftp://x/y"}])"},
    {"options[0].url must be an http address", R"("options": [{"name": "a", "url": "http://x/.."}])"},
    {"options[1].name is", R"("options": [{"name": "É", "folder": "out"}, {"name": "é", "folder": "out"}])"},
    {"options can't be offered by a patch",
     R"("patch": true, "options": [{"name": "a", "folder": "payload"}])"},
    {"completionURL must begin with http", R"("completionURL": "www.example.com")"},
    {"minOS is none of the known ones", R"("minOS": "MacOS9")"},
    {"executeBefore must be a file's name", R"("executeBefore": "Tools/x")"},
    {"executeAfter has the name of another", R"("executeAfter": {"name": "Data2", "file": "latin"})"},
};

class Refusals : public Workshop {};

TEST_F(Refusals, NameTheFieldAndWriteNothing) {
  Write("latin", "Gr\xFC\xDF");
  Folder("empty");
  ASSERT_EQ(0, ::mkfifo((Folder("odd") + "/fifo").c_str(), 0600));
  for (const auto& [says, members] : kRows) {
    const std::string sentence = Pack(json::parse("{" + std::string(members) + "}"));
    EXPECT_TRUE(sentence.starts_with(says)) << members << "\n  " << sentence;
    EXPECT_TRUE(fs::is_empty(Path("out"))) << members;
  }
}

TEST_F(Refusals, LongNamesOfFilesInAddresses) {
  const auto pack = [this](std::size_t length) {
    return Pack({{"options", {{{"name", "a"}, {"url", "http://x/" + std::string(length, 'n')}}}}});
  };
  EXPECT_TRUE(pack(256).starts_with("options[0].url must be an http address"));
  EXPECT_EQ("", pack(255));
}

TEST_F(Refusals, TextThatIsNoJsonNamesTheLine) {
  Write("bad.json", "{\n  \"message\": \"a\"\n  \"patch\": true\n}\n");
  Write("twins.json", R"({"payload": {"zip": "a"}, "url": {"text": "a", "text": "b"}})");
  EXPECT_NE(std::string::npos, PackFile(Path("bad.json")).find("line 3"));
  EXPECT_EQ("text stands twice in one object.", PackFile(Path("twins.json")));
  EXPECT_NE("", PackFile(Path("absent.json")));
}

}  // namespace pack
