// SPDX-License-Identifier: MIT
// Commands and programs as real processes.
#include "platform/posix/Process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "platform/Shell.h"
#include "support/TestMachine.h"

TEST(Process, ExitCodesOfCommands) {
  const TemporaryTree tree;
  tree.Write("ditto", "#!/bin/sh\nexit 42\n", 0755);
  ::signal(SIGPIPE, SIG_IGN);
  const std::pair<const char*, int> rows[] = {
      {"true", 0},
      {"no-such-command-anywhere", 127},
      {"kill -9 $$", 128 + SIGKILL},
      {"kill -PIPE $$", 128 + SIGPIPE},
      {"ditto -xk a b", 42},
      {"read line", 1},
      {"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2; exit 5", 5},
  };
  const auto wait = [] { ::usleep(1000); };
  for (const auto& [line, code] : rows) EXPECT_EQ(RunShellLine(line, tree.Path(), wait), code) << line;
  const std::string longest = "# " + std::string(300'000, 'x') + "\nexit 7";
  EXPECT_EQ(RunShellLine(longest, tree.Path(), wait), 7) << "longer than a word may be";
  EXPECT_EQ(RunShellLine("-n x; exit 8", tree.Path(), wait), 8) << "no option of the shell's";
}

TEST(Process, ToolsAreFoundWhateverTheirFolderIsCalled) {
  const TemporaryTree tree;
  TestMachine machine(tree);
  machine.fPump = [] { ::usleep(1000); };
  tree.Write("Setup: 1.0/it's/ditto", "#!/bin/sh\nexit 42\n", 0755);
  machine.fExecutable = tree.Path("Setup: 1.0/it's/TessarineStub");
  Shell shell;
  shell.Execute("cd / && ditto");
  EXPECT_EQ(shell.ErrorCode(), 42);
}

TEST(Process, ShellPathsAreOneWordWhateverTheyHold) {
  const TemporaryTree tree;
  TestMachine machine(tree);
  machine.fPump = [] { ::usleep(1000); };
  Shell shell;
  for (const char* name : {"a b", "it's", "''", "$(touch planted)", "`touch planted`", "-n", "line\nbreak",
                           "*", "\\", "\"x\"", "~", "a;b|c&d>e<f", "#x", "!1", "\u00E9 \xFF", "trailing "}) {
    const FolderItem item = FolderItem(tree.Path("names")).Child(name);
    shell.Execute("cd " + FolderItem(tree.Path()).ShellPath() + " && printf %s " + item.ShellPath() +
                  " >out");
    EXPECT_EQ(shell.ErrorCode(), 0) << name;
    EXPECT_EQ(tree.Read("out"), tree.Path("names/") + name);
  }
  EXPECT_FALSE(tree.Has("planted"));
}

TEST(Process, DetachedProgramsLeadASessionOfTheirOwn) {
  const TemporaryTree tree;
  const std::string script =
      "#!/bin/sh\necho $(cut -d' ' -f6 /proc/$$/stat) = $$ >\"$1.new\"; mv \"$1.new\" \"$1\"\n";
  ASSERT_TRUE(StartDetached(tree.Write("program", script, 0755), {tree.Path("o ut")}));
  for (int i = 0; i < 2000 && !tree.Has("o ut"); ++i) ::usleep(5000);
  const std::string report = tree.Read("o ut");
  const std::string id = report.substr(0, report.find(' '));
  EXPECT_EQ(report, id + " = " + id + "\n") << "session and process";
  EXPECT_FALSE(StartDetached(tree.Path("none"), {}));
  EXPECT_FALSE(StartDetached(tree.Write("text", "no program"), {}));
  EXPECT_EQ(StartPiped(tree.Path("none"), {}).id, -1);
}
