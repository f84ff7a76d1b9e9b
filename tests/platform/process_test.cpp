// SPDX-License-Identifier: MIT
// Commands and programs as real processes.
#include "platform/posix/Process.h"

#include <signal.h>
#include <unistd.h>

#include "base/StandardStreams.h"
#include "platform/Shell.h"
#include "support/TestMachine.h"

class Process : public MachineTest {
 protected:
  Process() {
    ::signal(SIGPIPE, SIG_IGN);
    fMachine.fPump = [] { ::usleep(1000); };
    fMachine.fExecutable = fTree.Path("Setup: 1.0/it's/TessarineStub");
    fTree.Write("Setup: 1.0/it's/ditto", "#!/bin/sh\nexit 42\n", 0755);
  }
  static int ExitCode(const std::string& line) {
    Shell shell;
    shell.Execute(line);
    return shell.ErrorCode();
  }
};

TEST_F(Process, ExitCodesOfCommands) {
  const std::pair<std::string, int> rows[] = {
      {"true", 0},
      {"no-such-command-anywhere", 127},
      {"kill -PIPE $$", 128 + SIGPIPE},
      {"cd / && ditto -xk a b", 42},  // whatever its folder is called
      {"read line", 1},
      {"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2; exit 5", 5},
      {"-n x; exit 8", 8},                                 // no option of the shell's
      {"# " + std::string(300'000, 'x') + "\nexit 7", 7},  // longer than a word may be
  };
  for (const auto& [line, code] : rows) EXPECT_EQ(ExitCode(line), code) << line.substr(0, 99);
}

TEST_F(Process, ShellPathsAreOneWordWhateverTheyHold) {
  for (const char* name : {"it's a b", "''", "$(touch planted)`touch planted`", "-n", "line\nbreak",
                           "*\\\"x\" ~;b|c&d>e<f#!1", "\u00E9 \xFF", "trailing "}) {
    const std::string word = FolderItem(fTree.Path("names")).Child(name).ShellPath();
    EXPECT_EQ(ExitCode("cd " + FolderItem(fTree.Path()).ShellPath() + " && printf %s " + word + " >out"), 0);
    EXPECT_EQ(fTree.Read("out"), fTree.Path("names/") + name);
  }
  EXPECT_FALSE(fTree.Has("planted"));
}

TEST_F(Process, DetachedProgramsLeadASessionOfTheirOwn) {
  const std::string script =
      "#!/bin/sh\necho $(cut -d' ' -f6 /proc/$$/stat) $(pwd) >\"$1.new\"; mv \"$1.new\" \"$1\"\n";
  const pid_t id = StartDetached(fTree.Write("program", script, 0755), {fTree.Path("o ut")});
  for (int i = 0; i < 2000 && !fTree.Has("o ut"); ++i) ::usleep(5000);
  EXPECT_EQ(fTree.Read("o ut"), std::to_string(id) + " /\n") << "its session, and its folder";
  EXPECT_EQ(StartDetached(fTree.Path("none"), {}), -1);
  EXPECT_EQ(StartDetached(fTree.Write("text", "no program"), {}), -1);
  EXPECT_EQ(StartPiped(fTree.Path("none"), {}).id, -1);
}

TEST_F(Process, ALaunchLastsAsLongAsAnyOfItsProcesses) {
  const auto runs = [this] { return fMachine.PosixMachine::LaunchedRuns(); };
  const FolderItem once(fTree.Write(
      "once", "#!/bin/sh\ncd \"${0%/*}\"\nset -C\necho $$ >first && exec sleep 1000\nmkdir second\n", 0755));
  for (const char* sign : {"first", "second"}) {
    ASSERT_TRUE(fMachine.PosixMachine::Launch(once));
    for (int i = 0; i < 2000 && !fTree.Has(sign); ++i) ::usleep(5000);
    ::usleep(20'000);
  }
  EXPECT_TRUE(runs());
  EXPECT_EQ(::kill(std::stoi(fTree.Read("first")), SIGKILL), 0);
  for (int i = 0; i < 2000 && runs(); ++i) ::usleep(5000);
  EXPECT_FALSE(runs());
  const pid_t third = StartDetached(once.NativePath(), {});
  for (int i = 0; i < 2000 && DetachedRuns(third); ++i) ::usleep(5000);
  EXPECT_NE(::kill(third, 0), 0) << "remains";
}

TEST(StandardStreams, AreThereAlsoWhereTheProgramWasStartedWithoutThem) {
  const auto start = [] {
    for (const int stream : {0, 1, 2}) ::close(stream);
    OpenStandardStreams();
    char nothing = 0;
    ::_exit(::read(0, &nothing, 1) == 0 && ::write(1, "x", 1) == 1 && ::write(2, "x", 1) == 1 ? 0 : 1);
  };
  EXPECT_EXIT(start(), testing::ExitedWithCode(0), "");
}
