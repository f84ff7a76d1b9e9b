// SPDX-License-Identifier: MIT
// The helper as a program: its arguments, its progress, its end at a bad moment.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "archive/Sandbox.h"

namespace fs = std::filesystem;

namespace ziptest {
namespace {

/// Many small files and a large one: enough work to be interrupted in.
std::string MuchWork() {
  std::vector<Item> items = {Packed("t/large", std::string(30 << 20, 'x'))};
  for (int i = 0; i < 3000; ++i)
    items.push_back(File("t/" + std::to_string(i % 40) + "/" + std::to_string(i)));
  return ZipOf(items);
}

class Program : public ::testing::Test, public Sandbox {
 protected:
  bool Empty() const { return Look("target").empty(); }
  /// A command line.
  std::string Ditto(const std::string& options) const {
    return "\"$DITTO\" -xk " + options + " " + Archive() + " " + Target();
  }
};

TEST_F(Program, TakesItsArguments) {
  Write("-a.zip", ZipOf({File("f")}));
  const struct {
    const char* arguments;
    int status;
  } rows[] = {
      {"-xk -- -a.zip -b", 0},    {"-xk -a.zip -b", 0},
      {"-x -k -a.zip -b", 0},     {"-xk --new -a.zip .", 0},
      {"-xk --new -a.zip no", 1}, {"-xk -a.zip made/by/it", 0},
      {"-xk missing.zip -b", 1},  {"-xk . -b", 1},
      {"-xk -a.zip ''", 1},       {"-a.zip -b", 2},
      {"-x -a.zip -b", 2},        {"-xk -a.zip", 2},
      {"-xk -q -a.zip -b", 2},    {"", 2},
  };
  for (const auto& row : rows) {
    const Outcome outcome = RunShell("cd " + Path() + " && \"$DITTO\" " + row.arguments);
    EXPECT_EQ(outcome.status, row.status) << row.arguments << ": " << outcome.err;
    EXPECT_EQ(outcome.err.empty(), row.status == 0) << row.arguments;
    EXPECT_EQ(outcome.out, "") << row.arguments;
  }
  EXPECT_TRUE(Has("-b/f") && Has("made/by/it/f"));
}

TEST_F(Program, TellsItsProgress) {
  Write("a.zip", MuchWork());
  const Outcome outcome = RunShell(Ditto("--no-sync --progress"));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::istringstream lines(outcome.out);
  std::string word;
  std::uint64_t total = 0, written = 0, last = 0;
  EXPECT_TRUE(lines >> word >> total && word == "total" && total == (30u << 20) + 3000 * 8);
  for (; lines >> word && word == "written" && lines >> written; last = written) EXPECT_GT(written, last);
  EXPECT_TRUE(last == total && word == "done");
}

TEST_F(Program, GoesOnWhenNobodyReads) {
  Write("a.zip", MuchWork());
  for (const char* reader : {" | true", " | sleep 0.3", " >&-", " >/dev/full"}) {
    fs::remove_all(Target());
    const Outcome outcome =
        RunShell("{ " + Ditto("--no-sync --progress") + "; echo $? >" + Path("status") + "; }" + reader);
    EXPECT_EQ(Read("status"), "0\n") << reader << outcome.err;
    EXPECT_TRUE(Has("target/t/large")) << reader;
  }
}

TEST_F(Program, IsKilledAtAnyMomentAndANewRunSucceeds) {
  Write("a.zip", MuchWork());
  Folder("target");
  for (const std::string signal : {"KILL", "TERM"}) {
    ASSERT_EQ(RunShell("rm -rf " + Target() + "/.ditto-*").status, 0);
    for (int i = 0; i < 25; ++i) {
      const std::string wait = "0.0" + std::to_string(10 + i * 3);
      RunShell("timeout -s " + signal + " " + wait + " " + Ditto("--no-sync --new"));
      if (Has("target/t")) {
        EXPECT_EQ(RunShell("find " + Target() + "/t -type f | wc -l").out, "3001\n");
        fs::remove_all(Path("target/t"));
      } else if (signal == "TERM") {
        EXPECT_TRUE(Empty()) << wait;
      }
    }
  }
  EXPECT_EQ(RunShell(Ditto("--new")).status, 0);
  EXPECT_EQ(RunShell("ls -A " + Target()).out, "t\n");
}

TEST_F(Program, LeavesAllAsItWasWhenACallFails) {
  if (RunShell("strace -o /dev/null true").status != 0)
    GTEST_SKIP() << "calls can't be made to fail without strace";
  Write("a.zip", ZipOf({File("a/f"), File("notes"), ziptest::Link("z", "notes")}));
  for (const char* when : {"1", "2", "3"}) {
    Folder("target");
    RunShell("strace -f -o /dev/null -e inject=renameat2:signal=KILL:when=" + std::string(when) + " " +
             Ditto("--no-sync --new"));
    EXPECT_FALSE(Has("target/a") && !Has("target/z")) << "what the archive is for comes last";
    if (!Has("target/a")) {
      EXPECT_EQ(RunShell(Ditto("--no-sync --new")).status, 0) << when;
    }
    EXPECT_EQ(Read("target/a/f"), "content\n");
    fs::remove_all(Target());
  }
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer's own calls would fail";
#endif
  Write("a.zip", ZipOf({File("d/old"), File("d/new"), File("d/large", std::string(2 << 20, 'x')), File("e/f"),
                        ziptest::Link("l", "d"), ziptest::Folder("closed/", 040555)}));
  const struct {
    const char* call;
    int last;  // how many of them are made to fail, one after the other
  } rows[] = {{"pread64:error=EIO", 6},   {"openat:error=EMFILE", 14},   {"mkdirat:error=ENOSPC", 3},
              {"write:error=ENOSPC", 3},  {"write:error=EINTR", 3},      {"utimensat:error=EIO", 6},
              {"symlinkat:error=EIO", 1}, {"renameat2:error=EACCES", 6}, {"fchmod:error=EPERM", 1}};
  for (const auto& row : rows) {
    for (int i = 1; i <= row.last; ++i) {
      SCOPED_TRACE(row.call + std::string(" ") + std::to_string(i));
      fs::remove_all(Target());
      Write("target/d/old", "old");
      const Snapshot before = Look("target");
      const Outcome outcome = RunShell("strace -f -o /dev/null -e inject=" + std::string(row.call) +
                                       ":when=" + std::to_string(i) + " " + Ditto("--no-sync"));
      if (outcome.status == 0) {
        EXPECT_EQ(Look("target").size(), 8u);
        continue;
      }
      EXPECT_TRUE(outcome.status == 1 || outcome.status == 127) << outcome.status;  // 127: the loader's calls
      EXPECT_EQ(Look("target"), before) << outcome.err;
    }
  }
}

TEST_F(Program, ReportsLimitsAndAFullDisk) {
  Write("a.zip", MuchWork());
  const std::string run = Ditto("--no-sync");
  Outcome outcome = RunShell("ulimit -f 20000; " + run);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("could not write \"t/large\": File too large"), std::string::npos)
      << outcome.err;
  EXPECT_TRUE(Empty());
#ifndef __SANITIZE_ADDRESS__  // needs descriptors itself
  for (int most = 4; most < 20; ++most) {
    outcome = RunShell("ulimit -n " + std::to_string(most) + "; " + run);
    EXPECT_EQ(outcome.status == 0, outcome.err.empty()) << most << outcome.err;
    EXPECT_EQ(Look("target").size(), outcome.status == 0 ? 3042u : 0u) << most;
    fs::remove_all(Target());
  }
#endif

  if (RunShell("mount -t tmpfs -o size=20m none " + Folder("target")).status != 0)
    GTEST_SKIP() << "may not mount";
  outcome = RunShell(run);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("enough room"), std::string::npos) << outcome.err;
  EXPECT_TRUE(Empty());
  EXPECT_EQ(RunShell("umount " + Target()).status, 0);
}

}  // namespace
}  // namespace ziptest
