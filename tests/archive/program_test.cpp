// SPDX-License-Identifier: MIT
// The helper as a program: its arguments, its progress, its end at a bad moment.
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <sstream>

#include "archive/Sandbox.h"
#include "support/SolidBuilder.h"

using namespace ziptest;

constexpr std::size_t kFrame = 300'000;

/// Many small files and a large one: enough work to be interrupted in.
std::string MuchWork(bool solid = false) {
  std::vector<Item> items = {Packed("t/large", std::string(30 << 20, 'x'))};
  items[0].deflate = !solid;
  for (int i = 0; i < 3000; ++i)
    items.push_back(File("t/" + std::to_string(i % 40) + "/" + std::to_string(i)));
  return solid ? Solid(ZipOf(items), kFrame) : ZipOf(items);
}

class Program : public ::testing::Test, public Sandbox {
 protected:
  bool Empty() const { return Look("target").empty(); }
  /// A command line.
  std::string Ditto(const std::string& options) const {
    return "\"$DITTO\" -xk " + options + " " + Archive() + " " + Target();
  }
  bool CanInject() const { return RunShell("strace -o /dev/null true").status == 0; }
  /// The same with something happening at a system call: what, and at which of its threads' calls.
  std::string Injected(const std::string& what, const std::string& options) const {
    const std::string call = what.substr(0, what.find(':'));
    return "strace -f --seccomp-bpf -o /dev/null -e trace=" + call + " -e inject=" + what + " " +
           Ditto(options);
  }
};

TEST_F(Program, LooksAtAPackagesArchiveWithoutWriting) {
  const Item large = File("t/large", std::string(3 << 20, 'x'));
  std::string good = ZipOf({Packed(large.name, large.content), File("t/a")}), bad = good;
  std::string whole = Solid(ZipOf({large, File("t/a")}), kFrame), cut = whole;
  cut.erase(cut.size() / 2, 1);
  std::string torn = whole;
  torn[12] ^= 1;
  bad[bad.find("content") + 1] ^= 1;  // of a stored entry
  for (std::string* bytes : {&good, &bad, &whole, &cut, &torn})
    for (std::size_t i = 1; i < bytes->size(); i += 2) ++(*bytes)[i];
  Write("good", good);
  Write("bad", bad);
  Write("whole", whole);
  Write("cut", cut);
  Write("torn", torn);
  const struct {
    const char* arguments;
    int status;
  } rows[] = {{"--plan --scrambled good", 0},  {"--check --scrambled good", 0},
              {"--plan --scrambled bad", 0},   {"--check --scrambled bad", 1},
              {"--plan --scrambled whole", 0}, {"--check --scrambled whole", 0},
              {"--plan --scrambled torn", 0},  {"--check --scrambled torn", 1},
              {"--plan --scrambled cut", 1},   {"--plan good", 1}};
  for (const auto& row : rows) {
    const Outcome outcome =
        RunShell("cd " + Path() + " && \"$DITTO\" -xk --progress " + row.arguments + " nowhere");
    EXPECT_EQ(outcome.status, row.status) << row.arguments << ": " << outcome.err;
    const std::string_view words = row.arguments;
    const bool readable = !words.ends_with("n good") && !words.ends_with("cut");
    EXPECT_EQ(outcome.out.starts_with("items 3\nlargest 3145728\ntotal 3145736\n"), readable)
        << row.arguments << outcome.out;
    EXPECT_FALSE(Has("nowhere")) << row.arguments;
  }
}

TEST_F(Program, TakesItsArguments) {
  Write("-a.zip", ZipOf({File("f")}));
  const std::pair<const char*, int> rows[] = {
      {"-xk -- -a.zip -b", 0},    {"-xk -a.zip -b", 0},
      {"-x -k -a.zip -b", 0},     {"-xk --new -a.zip .", 0},
      {"-xk --new -a.zip no", 1}, {"-xk -a.zip made/by/it", 0},
      {"-xk missing.zip -b", 1},  {"-xk . -b", 1},
      {"-xk -a.zip ''", 1},       {"-a.zip -b", 2},
      {"-x -a.zip -b", 2},        {"-xk -a.zip", 2},
      {"-xk -q -a.zip -b", 2},    {"", 2},
  };
  for (const auto& [arguments, status] : rows) {
    const Outcome outcome = RunShell("cd " + Path() + " && \"$DITTO\" " + arguments);
    EXPECT_EQ(outcome.status, status) << arguments << ": " << outcome.err;
    EXPECT_TRUE(outcome.err.empty() == (status == 0) && outcome.out.empty()) << arguments;
  }
  EXPECT_TRUE(Has("-b/f") && Has("made/by/it/f"));
}

TEST_F(Program, TellsItsProgressAndGoesOnWhenNobodyReads) {
  Write("a.zip", MuchWork());
  const Outcome outcome = RunShell(Ditto("--no-sync --progress"));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::istringstream lines(outcome.out);
  std::string word;
  std::uint64_t total = 0, written = 0, last = 0;
  EXPECT_TRUE(lines >> word >> total && word == "total" && total == (30u << 20) + 3000 * 8);
  for (; lines >> word && word == "written" && lines >> written; last = written) EXPECT_GT(written, last);
  EXPECT_TRUE(last == total && word == "done");
  for (const char* reader : {" | true", " | sleep 0.3", " >&-", " >/dev/full"}) {
    fs::remove_all(Target());
    const Outcome unread =
        RunShell("{ " + Ditto("--no-sync --progress") + "; echo $? >" + Path("status") + "; }" + reader);
    EXPECT_EQ(Read("status"), "0\n") << reader << unread.err;
    EXPECT_TRUE(Has("target/t/large")) << reader;
  }
}

TEST_F(Program, IsInterruptedAtAnyMoment) {
  Folder("target");
  for (int i = 10; i < 90; i += 5) {
    Write("a.zip", MuchWork(i % 2 == 0));
    RunShell("timeout -s TERM 0.0" + std::to_string(i) + " " + Ditto("--no-sync --new"));
    if (Has("target/t"))
      EXPECT_EQ(RunShell("find " + Target() + "/t -type f | wc -l").out, "3001\n");
    else
      EXPECT_TRUE(Empty()) << i;
    fs::remove_all(Path("target/t"));
  }
}

class Killed : public Program, public ::testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(PackedAsAWhole, Killed, ::testing::Bool());

TEST_P(Killed, AtAnyCallANewRunSucceeds) {
  if (!CanInject()) GTEST_SKIP() << "without strace nobody ends it at a call";
  const bool solid = GetParam();
  std::vector<Item> items = {File("t/large", std::string(3 << 20, 'x')), ziptest::Folder("closed/", 040555)};
  items[0].deflate = !solid;
  for (int i = 0; i < 150; ++i)
    items.push_back(File("t/" + std::to_string(i % 20) + "/" + std::to_string(i)));
  for (const char* top : {"a", "b", "c"}) items.push_back(File(top, "new"));
  const auto fresh = [&] {
    fs::remove_all(Target());
    for (const char* old : {"t/0/0", "t/1/mine", "a"}) Write(std::string("target/") + old, "old");
  };
  fresh();
  Snapshot before = Look("target");
  ASSERT_EQ(Expand(solid ? Solid(ZipOf(items), kFrame) : ZipOf(items)), "");
  const Snapshot after = Look("target");
  std::vector<std::string> calls;
  for (const char* call : {"openat", "mkdirat", solid ? "pwrite64" : "write", "utimensat"})
    for (const int when : {1, 3, 8, 21, 55, 80})
      calls.push_back(call + std::string(":when=") + std::to_string(when));
  for (int when = 1; when <= 12; ++when) calls.push_back("renameat2:when=" + std::to_string(when));
  for (const char* call : {"fchmodat", "unlinkat:when=1", "unlinkat:when=9"}) calls.push_back(call);
  for (const std::string& call : calls) {
    SCOPED_TRACE(call);
    fresh();
    RunShell(Injected(call + ":signal=KILL", "--no-sync"));
    for (const auto& [name, item] : Look("target")) {
      if (name.starts_with(".ditto-")) continue;
      EXPECT_TRUE(item == before[name] || (after.contains(name) && item == after.at(name)) ||
                  name == "closed")
          << name;
    }
    EXPECT_EQ(RunShell(Ditto("--no-sync")).status, 0);
    Snapshot now = Look("target");
    if (now["closed"] == "folder 755") now["closed"] = "folder 555";  // ended between the rename and the mode
    EXPECT_EQ(now, after);
  }
}

TEST_F(Program, LeavesAllAsItWasWhenACallFails) {
  if (!CanInject()) GTEST_SKIP() << "calls can't be made to fail without strace";
  Write("a.zip", ZipOf({File("a/f"), File("notes"), ziptest::Link("z", "notes")}));
  for (const char* when : {"1", "2", "3"}) {
    Folder("target");
    RunShell(Injected("renameat2:signal=KILL:when=" + std::string(when), "--no-sync --new"));
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
  const std::string zip = ZipOf({File("d/old"), File("d/new"), File("d/large", std::string(2 << 20, 'x')),
                                 File("e/f"), ziptest::Link("l", "d"), ziptest::Folder("closed/", 040555)});
  const struct {
    const char* call;
    int last;  // how many of them are made to fail, one after the other
    const char* options = "--no-sync";
    const char* told = "";  // of one of them
    bool solid = false;
  } rows[] = {{"pread64:error=EIO", 6},
              {"openat:error=EMFILE", 14},
              {"mkdirat:error=ENOSPC", 3},
              {"write:error=ENOSPC", 3},
              {"write:error=EINTR", 3},
              {"utimensat:error=EIO", 6},
              {"symlinkat:error=EIO", 1},
              {"renameat2:error=EACCES", 6},
              {"close:error=EIO", 12},
              {"clone3:error=EAGAIN", 4},
              {"newfstatat:error=EIO", 9},
              {"fstatfs:error=EIO", 2},
              {"syncfs:error=EIO", 1, "", "flush"},
              {"fcntl:error=EMFILE", 6, ""},
              {"getdents64:error=EIO", 2},
              {"pread64:error=EIO", 9, "--no-sync", "read the archive", true},
              {"pwrite64:error=ENOSPC", 9, "--no-sync", "could not write \"d/", true},
              {"openat:error=EMFILE", 14, "--no-sync", "create", true},
              {"utimensat:error=EIO", 6, "--no-sync", "set the time of", true},
              {"close:error=EIO", 12, "--no-sync", "", true},
              {"clone3:error=EAGAIN", 4, "--no-sync", "", true}};
  for (const auto& row : rows) {
    std::string told;
    Write("a.zip", row.solid ? Solid(zip, kFrame) : zip);
    for (int i = 1; i <= row.last; ++i) {
      SCOPED_TRACE(row.call + std::string(" ") + std::to_string(i));
      fs::remove_all(Target());
      Write("target/d/old", "old");
      const Snapshot before = Look("target");
      const Outcome outcome =
          RunShell(Injected(row.call + std::string(":when=") + std::to_string(i), row.options));
      if (outcome.status == 0) {
        EXPECT_EQ(Look("target").size(), 8u);
        continue;
      }
      EXPECT_TRUE(outcome.status == 1 || outcome.status == 127) << outcome.status;  // 127: the loader's calls
      EXPECT_EQ(Look("target"), before) << outcome.err;
      told += outcome.err;
    }
    EXPECT_NE(told.find(row.told), told.npos) << row.call << told;
  }
  // One worker, so that the twelfth close of a thread is a file's.
  for (const Item& item : {Packed("", "whole"), File("", std::string(2 << 20, 's'))}) {
    std::vector<Item> many(20, item);
    for (Item& file : many) file.name = "f" + std::to_string(&file - many.data());
    Write("a.zip", ZipOf(many));
    const Outcome outcome = RunShell("taskset -c 0 " + Injected("close:error=EIO:when=12", "--no-sync"));
    EXPECT_NE(outcome.err.find("could not write \"f"), outcome.err.npos)
        << item.content.size() << outcome.err;
  }
}

TEST_F(Program, ShutsItselfInBeforeItReadsAndFlushesBeforeItPublishes) {
  if (!CanInject()) GTEST_SKIP() << "calls can't be seen without strace";
  Write("a.zip", ZipOf({File("t/a"), File("b")}));
  const std::string calls = "prctl,landlock_restrict_self,mkdirat,/clone,syncfs,renameat2 ";
  ASSERT_EQ(RunShell("strace -f -o " + Path("calls") + " -e trace=" + calls + Ditto("")).status, 0);
  // What was done, in the order of all: a letter each, a capital one where the main thread did it.
  const std::pair<const char*, char> letters[] = {
      {"NO_NEW_PRIVS", 'n'}, {"SET_SECCOMP", 's'}, {"clone", 'c'},    {"restrict_self", 'w'},
      {".ditto-", 'd'},      {"syncfs", 'f'},      {"renameat2", 'r'}};
  std::istringstream lines(Read("calls"));
  std::string done, main, thread;
  for (std::string line; lines >> thread && std::getline(lines, line);) {
    if (main.empty()) main = thread;
    for (const auto& [call, letter] : letters)
      if (line.find(call) != line.npos && line.find("unfinished") == line.npos &&
          line.find("= -1") == line.npos)
        done += static_cast<char>(thread == main ? std::toupper(letter) : letter);
  }
  const bool walls = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) >= 2;
  EXPECT_TRUE(done.starts_with(walls ? "NSCwWDC" : "NSCDC"))
      << done << ": the filter and the wall come first";
  EXPECT_GE(std::count_if(done.begin(), done.end(), [](char c) { return c == 'w' || c == 'W'; }),
            walls ? std::count(done.begin(), done.end(), 'C') : 0)
      << done;
  const bool flushes = RunShell("stat -f -c %T " + Target()).out != "tmpfs\n";
  EXPECT_TRUE(done.ends_with(flushes ? "fRR" : "RR")) << done << ": flushed, then put into place";
}

class Limited : public Program, public ::testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(PackedAsAWhole, Limited, ::testing::Bool());

TEST_P(Limited, ReportsLimitsAndAFullDisk) {
  const std::string much = MuchWork(GetParam());
  Write("a.zip", much);
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

  for (const Item& item : {File("last", std::string(1500, 'x')), Packed("last", std::string(1500, 'x'))}) {
    Write("a.zip", ZipOf({item}));
    outcome = RunShell("ulimit -f 1; " + run);
    EXPECT_EQ(outcome.status, 1) << "a part of the last bytes was written";
    EXPECT_TRUE(Empty());
  }
  Write("a.zip", much);
  {
    const SmallDisk few(Folder("target"), 100 << 10, 100);
    if (!few.Mounted()) GTEST_SKIP() << "needs root: mounts";
    outcome = RunShell(run);
    EXPECT_NE(outcome.err.find("can't hold so many files"), std::string::npos) << outcome.err;
    EXPECT_TRUE(Empty());
  }
  const SmallDisk disk(Folder("target"), 4 << 10);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  outcome = RunShell(run);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("enough room"), std::string::npos) << outcome.err;
  std::vector<Item> small;  // each takes a whole page
  for (int i = 0; i < 2000; ++i) small.push_back(File("t/" + std::to_string(i)));
  Write("a.zip", GetParam() ? Solid(ZipOf(small), kFrame) : ZipOf(small));
  outcome = RunShell(run);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("No space left"), std::string::npos) << outcome.err;
  EXPECT_TRUE(Empty());
}
