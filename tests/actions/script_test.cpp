// SPDX-License-Identifier: MIT
// What the publisher's texts mean: the action script, specifiers, programs' answers.
#include <gtest/gtest.h>

#include "actions/ActionScript.h"
#include "actions/ExternalPrograms.h"
#include "actions/ShellCommands.h"
#include "actions/Specifiers.h"

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
      {"preinstallcopy=/a;/b;/c", {Kind::PreInstallCopy, "", "/a", "/b"}},
      {"Read Me.txt=/b/R.txt", {Kind::Copy, "", "Read Me.txt", "/b/R.txt"}},
      {"P=[/Host]/P]/dropped", {Kind::Copy, "", "P", "/P", "/Host", true}},
      {"P={/a/b}ignored", {Kind::Copy, "", "P", "/a/b", "", false, true}},
      {"P=[/Host]{/a/b}", {Kind::Copy, "", "P", "/a/b", "/Host", false, true}}};
  const auto fields = [](const Action& a) {
    return std::tie(a.kind, a.value, a.source, a.destination, a.folderTest, a.tested, a.onlyIfMissing);
  };
  for (const auto& [entry, action] : rows)
    EXPECT_EQ(fields(ParseActions(std::string("shell=x|") + entry)[1]), fields(action)) << entry;
  for (const char* entry : {"delete=", "=x", "x", ""})
    EXPECT_EQ(ParseActions(std::string("shell=x|") + entry)[1].kind, Kind::Invalid) << entry;
  EXPECT_EQ(ParseActions("").size() + ParseActions("a=/b||shell=x|").size(), 4U);
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
