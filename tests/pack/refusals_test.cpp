// SPDX-License-Identifier: MIT
// What can't be packed, and the field that the answer names.
#include <sys/stat.h>

#include "Workshop.h"
#include "support/ZipBuilder.h"

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
    {"actions[1] can't hold \"|\"", R"("actions": ["shell=b", "shell=a|b"])"},
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
    {"targetFolder must name a folder, without", R"("targetFolder": ".")"},
    {"targetFolder must name a folder, without", R"("targetFolder": "a/../b")"},
    {"targetFolder must name a folder, without", R"("targetFolder": "a/")"},
    {"targetFolder must name a folder, without", R"("targetFolder": "/a")"},
    {"targetFolder must name a folder, without", R"("targetFolder": "a\nb")"},
    {"choices[0].target must name a folder inside",
     R"("choices": [{"name": "a", "folder": "payload", "target": "../b"}])"},
    {"targetFolder can't be installed: the entry", R"("targetFolder": "C:Lamp")"},
    {"targetFolder is a name that archives keep", R"("targetFolder": "__MACOSX")"},
    // Actions that nothing would come of.
    {"actions[0] names nothing that the payload holds: \"creatfolder\"; did you mean `createfolder`?",
     R"("actions": ["creatfolder=/opt/x"])"},
    {"actions[1] names nothing that the payload holds: \"Read me.txt\"; did you mean `Read Me.txt`?",
     R"("actions": ["Read Me.txt=/a", "Read me.txt=/a"])"},
    {"actions[0] names nothing that the payload holds", R"("actions": ["../x=/a"])"},
    {"actions[0] names nothing that the payload holds", R"("actions": ["shellfile=first"])"},
    {"actions[0] copies to \"b\", which must begin with \"/\" or", R"("actions": ["Read Me.txt=b"])"},
    {"actions[0] copies to \"\"", R"("actions": ["Read Me.txt=[/a"])"},
    {"actions[0] looks for \"a\"", R"("actions": ["Read Me.txt=[a]/b"])"},
    {"actions[0] deletes \"UserAccount/\", which names no item", R"("actions": ["delete=UserAccount/"])"},
    {"actions[0] deletes \"/usr/./lib/\", which the installer leaves alone",
     R"("actions": ["preinstalldelete=/usr/./lib/"])"},
    {"actions[0] saves \"UserAccount/a\", which must begin",
     R"("actions": ["preinstallcopy=UserAccount/a;/b"])"},
    {"actions[0] can't hold a second \";\"", R"("actions": ["preinstallcopy=/a;/b;/c"])"},
    {"actions[0] counts from the patch's folder", R"("patch": true, "actions": ["Read Me.txt=/a"])"},
    // Archives, by the expander's plan.
    {"payload.folder holds what no installer takes: the link \"Lamp/x\" leads outside",
     R"("payload": {"folder": "leaving"})"},
    {"payload.zip holds what no installer takes: the link \"Lamp/x\" leads outside",
     R"("payload": {"folder": null, "zip": "absolute.zip"})"},
    {"payload.zip holds what no installer takes: the entry \"Lamp/x\" is packed by",
     R"("payload": {"folder": null, "zip": "method.zip"})"},
    {"payload.zip holds what no installer takes: the entry \"Lamp/x\" is encrypted",
     R"("payload": {"folder": null, "zip": "locked.zip"})"},
    {"payload.zip holds what no installer takes: the entry \"Lamp/../x\" has \"..\"",
     R"("payload": {"folder": null, "zip": "climbing.zip"})"},
    {"payload.zip holds what no installer takes: the entry \"Lamp/n",
     R"("payload": {"folder": null, "zip": "long.zip"})"},
    {"payload.zip must hold nothing but a folder \"Lamp\", and holds \"Other\"",
     R"("payload": {"folder": null, "zip": "two.zip"})"},
    {"payload.zip names a zip that holds nothing", R"("payload": {"folder": null, "zip": "empty.zip"})"},
    {"options[0].zip holds what no installer takes: the link \"x\" leads outside",
     R"("options": [{"name": "a", "zip": "leaving.zip"}])"},
    {"cleanup.program holds no application bundle",
     R"("cleanup": {"mode": 1, "program": {"zip": "two.zip"}})"},
    // Slips: wrong types, unknown keys, missing files, contradictions.
    {"titel is no key of the description.", R"("titel": "x")"},
    {"agreemnt is no key of the description; did you mean `agreement`?", R"("agreemnt": "x")"},
    {"choices[0].url is no key that \"choices[0]\" may have",
     R"("choices": [{"name": "a", "folder": "payload", "url": "http://x/y"}])"},
    {"message must be a string", R"("message": 1)"},
    {"patch must be true or false", R"("patch": 1)"},
    {"encryptionLength must be a whole number", R"("encryptionLength": 1.5)"},
    {"encryptionLength must be a whole number", R"("encryptionLength": 18446744073709551615)"},
    {"cleanup.mode must be a whole number from 0 to 4", R"("cleanup": {"mode": 5})"},
    {"cleanup.program is missing", R"("cleanup": {"mode": 1})"},
    {"cleanup.program holds no application bundle",
     R"("cleanup": {"mode": 1, "program": {"folder": "payload"}})"},
    {"labels.quitt is no label's name and no index from 0 to 26; did you mean `quit`?",
     R"("labels": {"quitt": "x"})"},
    {"labels.quit is given both", R"("labels": {"1": "x", "quit": "x"})"},
    {"agreement.file names no file", R"("agreement": {"file": "none.txt"})"},
    {"message is no UTF-8 text", R"("message": {"file": "latin"})"},
    {"logo names no PNG", R"("logo": "latin")"},
    {"payload is missing", R"("payload": null)"},
    {"payload.folder names no folder", R"("payload": {"folder": "none"})"},
    {"payload.folder names a folder that holds nothing", R"("payload": {"folder": "empty"})"},
    {"payload.folder holds something that is no file", R"("payload": {"folder": "odd"})"},
    {"payload.folder holds a name that is no UTF-8", R"("payload": {"folder": "strange"})"},
    {"payload.zip holds what no installer takes", R"("payload": {"folder": null, "zip": "latin"})"},
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
    {"payload.splitSizes[1] must be a number of bytes", R"("payload": {"splitSizes": [1000000, 999999]})"},
    {"payload.splitSize must be a number of bytes, 1000000", R"("payload": {"splitSize": 650})"},
    {"options[1].name is",
     R"("options": [{"name": "a", "folder": "payload"}, {"name": "A", "folder": "payload"}])"},
    {"options[0].url must be an http address", R"("options": [{"name": "a", "url": "ftp://x/y"}])"},
    {"options[0].url must be an http address", R"("options": [{"name": "a", "url": "http://x/.."}])"},
    {"options[1].name is",
     R"("options": [{"name": "É", "folder": "payload"}, {"name": "é", "folder": "payload"}])"},
    {"options can't be offered by a patch",
     R"("patch": true, "options": [{"name": "a", "folder": "payload"}])"},
    {"completionURL must be \"http://\" or", R"("completionURL": "www.example.com")"},
    {"completionURL must be \"http://\" or", R"("completionURL": "https:///path")"},
    {"url must be a web address", R"("url": "mailto:a@example.com")"},
    {"url.address must be a web address", R"("url": {"address": "http://a b/"})"},
    {"agreement holds no text", R"("agreement": " \n")"},
    {"executeAfter.file names nothing that exists", R"("executeAfter": {"file": "none"})"},
    {"minOS is none of the known ones", R"("minOS": "MacOS9")"},
    {"executeBefore must be a file's name", R"("executeBefore": "Tools/x")"},
    {"executeBefore names nothing in the package", R"("executeBefore": "Checker.app")"},
    {"executeBefore can't count from InstallFolder/", R"("executeBefore": "InstallFolder/Read Me.txt")"},
    {"executeBefore must lead to a full path", R"("executeBefore": "FixedPath/bin/x")"},
    {"executeBefore.file names no program; it must be executable", R"("executeBefore": {"file": "latin"})"},
    {"executeBefore.file names no application bundle", R"("executeBefore": {"file": "payload"})"},
    {"executeAfter names nothing that the payload", R"("executeAfter": "InstallFolder/Lamp.app")"},
    {"executeAfter names something in the payload that isn't exec",
     R"("executeAfter": "InstallFolder/Read Me.txt")"},
    {"executeAfter has the name of another", R"("executeAfter": {"name": "Data2", "file": "tool"})"},
};

class Refusals : public Workshop {
 protected:
  Refusals() {
    using ziptest::File, ziptest::Says, ziptest::ZipOf;
    Write("latin", "Gr\xFC\xDF");
    Write("tool", "#!/bin/sh\n", 0755);
    Folder("empty");
    EXPECT_EQ(0, ::mkfifo((Folder("odd") + "/fifo").c_str(), 0600));
    Write("strange/Gr\xFC\xDF", "x");
    Folder("leaving");
    Link("leaving/x", "../../y");
    const auto says = [](auto change) {
      return ziptest::Item{.name = "Lamp/x", .central = change, .local = change};
    };
    Write("absolute.zip", ZipOf({ziptest::Link("Lamp/x", "/etc/passwd")}));
    Write("leaving.zip", ZipOf({ziptest::Link("x", "../y")}));
    Write("method.zip", ZipOf({says([](Says& s) { s.method = 12; })}));
    Write("locked.zip", ZipOf({says([](Says& s) { s.flags |= 1; })}));
    Write("climbing.zip", ZipOf({File("Lamp/../x")}));
    Write("long.zip", ZipOf({File("Lamp/" + std::string(256, 'n'))}));
    Write("two.zip", ZipOf({File("Lamp/x"), File("Other/y")}));
    Write("empty.zip", ZipOf({}));
  }
};

TEST_F(Refusals, NameTheFieldAndWriteNothing) {
  for (const auto& [says, members] : kRows) {
    const std::string sentence = Pack(json::parse("{" + std::string(members) + "}"));
    EXPECT_TRUE(sentence.starts_with(says)) << members << "\n  " << sentence;
    ASSERT_TRUE(fs::is_empty(Path("out"))) << members;
  }
}

TEST_F(Refusals, ComeAllAtOnceEachWithItsPlace) {
  const std::string file = Write("bad.json", R"({
  // A comment with a { and a "
  "targetFolder": "Lamp", "mesage": "é",
  "payload": {"folder": "odd", "compression": "solids"},
  "actions": ["shell=ls",
    "delet=/a"],
  "labels": {"quit": 1}, "options": [{"name": "a"}],
  "titel": "x", "titel": "y"
})");
  try {
    ReadDescription(file);
    FAIL();
  } catch (const Mistakes& mistakes) {
    std::istringstream lines(mistakes.what());
    for (const std::string& says : std::vector<std::string>{
             "3:27: mesage is no key of the description; did you mean `message`?",
             "4:15: payload.folder holds something that is no file, folder or link: " + Path("odd/fifo") +
                 ".",
             "4:32: payload.compression must be \"solid\", \"deflate\" or \"store\"; did you mean `solid`?",
             "6:5: actions[1] names nothing that the payload holds: \"delet\"; did you mean `delete`?",
             "7:14: labels.quit must be a string.",
             "7:38: options[0].folder is missing, and so are zip and url.",
             "8:3: titel stands twice in one object.", "8:3: titel is no key of the description."}) {
      std::string line;
      std::getline(lines, line);
      EXPECT_EQ(file + ":" + says, line);
    }
  }
}

TEST_F(Refusals, LongNamesOfFilesInAddresses) {
  const auto pack = [this](std::size_t length) {
    return Pack({{"options", {{{"name", "a"}, {"url", "http://x/" + std::string(length, 'n')}}}}});
  };
  EXPECT_TRUE(pack(256).starts_with("options[0].url must be an http address"));
  EXPECT_EQ("", pack(255));
}

TEST_F(Refusals, TextThatIsNoJsonNamesThePlace) {
  Write("bad.json", "{\n  \"message\": \"a\"\n  \"patch\": true\n}\n");
  EXPECT_TRUE(PackFile(Path("bad.json")).starts_with("This is no JSON: ")) << PackFile(Path("bad.json"));
  EXPECT_NE("", PackFile(Path("absent.json")));
}

}  // namespace pack
