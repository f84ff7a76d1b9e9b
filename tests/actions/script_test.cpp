// SPDX-License-Identifier: MIT
// What the publisher's texts mean: the action script, specifiers, programs' answers, requirements, pixels.
#include <gtest/gtest.h>

#include "actions/ActionScript.h"
#include "actions/ExternalPrograms.h"
#include "actions/ShellCommands.h"
#include "actions/Specifiers.h"
#include "dialogs/MessageModal.h"
#include "package/PixelStrings.h"
#include "session/Requirements.h"
#include "util/GlobalsKv.h"

using Kind = Action::Kind;

static std::vector<Action> ParseActions(const std::string& text) {
  std::vector<Action> actions;
  ActionScript script(text);
  while (const std::optional<Action> action = script.Next()) actions.push_back(*action);
  return actions;
}

TEST(Script, EntriesAreReadByKeyAndForm) {
  const std::pair<const char*, Action> rows[] = {
      {"DELETE=/tmp/x", {Kind::Delete, "/tmp/x"}},
      {"shell=FOO=1 tool", {Kind::Shell, "FOO"}},
      {"PreInstallDelete=", {Kind::PreInstallDelete}},
      {"preinstallcopy=/a;/b;/c", {Kind::PreInstallCopy, "", "/a", "/b"}},
      {"Read Me.txt=/b/R.txt", {Kind::Copy, "", "Read Me.txt", "/b/R.txt"}},
      {"P=[/Host]/P]/dropped", {Kind::Copy, "", "P", "/P", "/Host", true}},
      {"P={/a/b}ignored", {Kind::Copy, "", "P", "/a/b", "", false, true}},
      {"P=[/Host]{/a/b}", {Kind::Copy, "", "P", "/a/b", "/Host", false, true}},
      {"P=[/Host", {Kind::Copy, "", "P", "", "/Host", true}}};
  const auto fields = [](const Action& a) {
    return std::tie(a.kind, a.value, a.source, a.destination, a.folderTest, a.tested, a.onlyIfMissing);
  };
  for (const auto& [entry, action] : rows)
    EXPECT_EQ(fields(ParseActions(std::string("shell=x|") + entry)[1]), fields(action)) << entry;
  for (const char* entry : {"delete=", "=x", "x", ""})
    EXPECT_EQ(ParseActions(std::string("shell=x|") + entry)[1].kind, Kind::Invalid) << entry;
  EXPECT_TRUE(ParseActions("").empty());
  EXPECT_EQ(ParseActions("a=/b||shell=x|").size(), 4u);
  EXPECT_EQ(ExpandUserAccount("useraccount/x", "/h"), "/h/x");
  EXPECT_EQ(ExpandUserAccount("/a/UserAccount/x", "/h"), "/a/UserAccount/x");
}

TEST(Specifiers, AreResolvedInARow) {
  const SpecifierFolders folders{"/home/u", "/opt/Tool", "/media/x/"};
  const char* const rows[][3] = {{"UserAccount/L/T.app", "/home/u/L/T.app", "/media/x/L/T.app"},
                                 {"installfolder/", "/opt/Tool/", "/media/x/"},
                                 {"FixedPath//A/T.app", "/A/T.app", "/media/x//A/T.app"},
                                 {"FixedPath/SetupFolder/T.app", "/media/x/T.app", "/media/x/T.app"}};
  for (const auto& [name, path, clipboard] : rows) {
    const auto resolved = ResolveSpecifier(name, folders);
    EXPECT_TRUE(resolved && resolved->path == path && resolved->clipboard == clipboard) << name;
  }
  EXPECT_FALSE(ResolveSpecifier("Tools/UserAccount/x", folders));
}

TEST(Programs, AnswersAndScriptFilesAreTakenApart) {
  using Answer = ProgramAnswer::Kind;
  EXPECT_EQ(ReadAnswer("tessarinewait").kind, Answer::Wait);
  EXPECT_EQ(ReadAnswer("TessarineWait ").kind, Answer::Other);
  EXPECT_EQ(ReadAnswer("TESSARINEABORT:Close it.").message, "Close it.");
  EXPECT_EQ(ReadAnswer("TessarineDone:").kind, Answer::Done);
  EXPECT_EQ(ReadAnswer("xTessarineDone:y").message, "");
  EXPECT_EQ(ScriptLines("a\nb\r\nc\r\n"), (std::vector<std::string>{"a\nb", "c", ""}));
  EXPECT_EQ(ScriptLines("a\rb\nc"), (std::vector<std::string>{"a\rb", "c"}));
  EXPECT_EQ(ScriptLines("a\rb"), (std::vector<std::string>{"a", "b"}));
}

TEST(Requirements, AreMetAtTheirThreshold) {
  const std::tuple<std::string, int, int, bool> rows[] = {
      {"macos10.12", 10, 12, true}, {"MacOS10.12", 10, 11, false}, {"MacOS10.12", 12, 0, true},
      {"MacOS10.12", 0, 0, true},   {"MacOS11.1", 0, 0, false},    {"MacOS11.1", 11, 0, false},
      {"MacOS11.1", 12, 0, true},   {"MacOS12.0", 1, 0, true}};
  for (const auto& [keyword, major, minor, met] : rows)
    EXPECT_EQ(VersionComplaint(keyword, major, minor),
              met ? "" : "Mac OS X " + keyword.substr(5) + " or later is required.")
        << keyword << major;
  EXPECT_EQ(MemoryComplaint("1gb", 1000), "");
  EXPECT_EQ(MemoryComplaint("1GB", 999), "1 GB RAM is required.");
  EXPECT_EQ(MemoryComplaint("3GB", 1), "");
}

TEST(Pixels, AreDecodedInOnePassAndRefusedWhenDamaged) {
  const char* const rows[][2] = {
      {"ABC", "ABC"}, {"A[3]B[2]", "AAABB"}, {"XA[3]YB[2]Z", "XAAAYBBZ"}, {"A[0]", ""}, {"A[]", ""}};
  for (const auto& row : rows) {
    std::string pixels = row[0];
    EXPECT_TRUE(PixelStringExpand(pixels));
    EXPECT_EQ(pixels, row[1]);
  }
  for (const char* damaged : {"[3]", "A[3", "A[3][2]", "A[50000001]", "A[30000000]B[30000000]"}) {
    std::string pixels = damaged;
    EXPECT_FALSE(PixelStringExpand(pixels)) << damaged;
    EXPECT_EQ(pixels, damaged);
    EXPECT_FALSE(DecodePicture(1, 1, damaged)) << damaged;
  }
  const auto picture = DecodePicture(2, 1, "1F[3]2[3]A0[2]30");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels, (std::vector<std::uint8_t>{0x1F, 0xFF, 0x22, 0x2A, 0x00, 0x30}))
      << "odd runs begin and end inside a byte";
  for (const auto& [width, height] : {std::pair{1, 1}, {2, 2}, {0, 1}, {-2, -1}, {1 << 30, 1 << 30}})
    EXPECT_FALSE(DecodePicture(width, height, "1F[3]2[3]A0[2]30")) << width;
}

TEST(Messages, AreSizedByTheirLength) {
  GlobalsKv::KvAppInit();
  const std::pair<unsigned, Size> rows[] = {{39, {-250, -150}}, {40, {-60, -50}}, {199, {-60, -50}},
                                            {200, {0, 0}},      {400, {0, 0}},    {401, {0, 100}},
                                            {600, {0, 100}},    {601, {0, 200}}};
  for (const auto& [length, step] : rows)
    EXPECT_EQ(MessageSizeStep(std::string(length - 1U, 'x') + "\u00E9"), step) << length;
  EXPECT_EQ(MessageSizeStep("two\nlines"), (Size{-60, -50}));
}
