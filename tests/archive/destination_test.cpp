// SPDX-License-Identifier: MIT
// What stands in the target folder already.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

#include "archive/Sandbox.h"
#include "archive/Wall.h"
#include "archive/writing/FolderCache.h"
#include "base/Descriptor.h"

using namespace ziptest;

std::string Bundle() {
  return ZipOf({File("f", "new"), File("d/f", "new"), File("d/e/g", "new"), Link("l", "f")});
}

TEST(Destination, MergesItemByItem) {
  const Sandbox box;
  for (const char* name : {"f", "d/kept", "d/e/g", "l"}) box.Write(std::string("target/") + name, "old");
  ASSERT_EQ(box.Expand(Bundle()), "");
  EXPECT_EQ(box.Look("target"), Items("f: new|d/|d/f: new|d/kept: old|d/e/|d/e/g: new|l: link to f"));
}

TEST(Destination, NeverWritesThroughWhatIsPlanted) {
  // What is planted, by the shell in the target folder, and whether it is replaced.
  const std::tuple<const char*, std::string, bool> rows[] = {
      {"a link under a file's name", "ln -s ../outside/kept f", true},
      {"a dangling link", "ln -s ../outside/new f", true},
      {"a hard link", "ln ../outside/kept f", true},
      {"a FIFO", "mkfifo f", false},
      {"a link on the way", "ln -s ../outside d", false},
      {"a link deeper on the way", "mkdir d; ln -s ../../outside d/e", false},
      {"a file on the way", "touch d", false},
      {"a folder under a file's name", "mkdir f", false},
      {"a folder under a link's name", "mkdir l", false},
  };
  for (const auto& [why, plant, replaced] : rows) {
    for (const bool wall : {true, false}) {
      SCOPED_TRACE(why);
      const Sandbox box;
      box.Write("outside/kept", "untouched");
      const Snapshot outside = box.Look("outside");
      ASSERT_EQ(RunShell("cd " + box.Folder("target") + " && " + plant).status, 0);
      Snapshot before = box.Look("target");
      EXPECT_EQ(box.Expand(Bundle(), {.wall = wall}) == "", replaced);
      EXPECT_EQ(box.Look("outside"), outside);
      if (replaced) before["f"] = "file 644 new";
      for (const auto& [name, item] : before) EXPECT_EQ(box.Look("target")[name], item);
      EXPECT_TRUE(replaced || box.Look("target") == before);
    }
  }
}

TEST(Destination, FoldersAreNeverEnteredThroughALink) {
  // As if the link came after all checks.
  const Sandbox box;
  auto plan = archive::ReadPlan(archive::MemorySource(Bundle()), 1);
  ASSERT_TRUE(plan.Ok());
  box.Link("d", box.Folder("elsewhere"));
  const Descriptor root(open(box.Path().c_str(), O_PATH | O_DIRECTORY));
  archive::MadeFolders made(*plan);
  archive::FolderCache folders(*plan, root.Get(), 4, &made);
  EXPECT_EQ(folders.Open(plan->tree.Find(archive::kRoot, "d")), -1);
}

TEST(Destination, NewReplacesNothing) {
  const Sandbox box;
  const std::string zip = ZipOf({File("a/f", "new"), File("Notes.txt", "new"), File("d/f", "new")});
  const Sandbox::Way asNew{.mustBeNew = true};
  EXPECT_NE(box.Expand(zip, asNew).find("missing"), std::string::npos);
  EXPECT_FALSE(box.Has("target"));
  // What the archive is named after must be new, and nothing comes without it.
  box.Folder("target/a");
  EXPECT_NE(box.Expand(zip, asNew).find("holds \"a\" already"), std::string::npos);
  EXPECT_EQ(box.Look("target").size(), 1u);
  fs::remove(box.Path("target/a"));
  for (const char* taken : {"Notes.txt", "Notes 2.txt", "d/mine"})
    box.Write(std::string("target/") + taken, "mine");
  const std::string linked = ZipOf({File("a/f"), Link("a/l", "../d"), File("d/f")});
  EXPECT_NE(box.Expand(linked, asNew).find("\"d\" already, and a link"), std::string::npos);
  EXPECT_EQ(box.Expand(zip, asNew), "");
  EXPECT_EQ(box.Look("target"),
            Items("Notes.txt: mine|Notes 2.txt: mine|Notes 3.txt: new|a/|a/f: new|d/|d/mine: mine|d 2/|"
                  "d 2/f: new"));
}

TEST(Destination, TheWallLetsThroughWhatIsBelowTheFolderOnly) {
  if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 2)
    GTEST_SKIP() << "the kernel offers no wall";
  const Sandbox box;
  const std::string kept = box.Write("above/kept", "x");
  const Descriptor inside(open(box.Folder("above/in").c_str(), O_PATH)),
      above(open(box.Path("above").c_str(), O_PATH));
  std::thread([&] {  // a wall stands for its thread
    archive::RestrictCalls();
    archive::FolderWall(inside.Get(), above.Get()).Enter();
    EXPECT_TRUE(Descriptor(openat(inside.Get(), "f", O_WRONLY | O_CREAT, 0600)));
    EXPECT_FALSE(Descriptor(open(kept.c_str(), O_RDONLY)));
    EXPECT_FALSE(Descriptor(openat(above.Get(), "f", O_WRONLY | O_CREAT, 0600)));
    EXPECT_NE(unlinkat(above.Get(), "kept", 0), 0);
    EXPECT_EQ(socket(AF_UNIX, SOCK_STREAM, 0), -1);
    EXPECT_EQ(unlinkat(inside.Get(), "f", 0), 0);
    EXPECT_EQ(unlinkat(above.Get(), "in", AT_REMOVEDIR), 0);
  })
      .join();
}

TEST(Destination, LeftoversOfKilledRunsGoAndThoseOfRunningOnesStay) {
  const Sandbox box;
  const std::string left = "target/.ditto-99-0123456789abcdef", used = "target/.ditto-98-0123456789abcdef";
  box.Link(left + "/closed/link", box.Folder("outside"));
  box.Folder("outside/folder");
  fs::permissions(box.Folder("target/.ditto-mine"), fs::perms(0700));
  fs::permissions(box.Path(left + "/closed"), fs::perms(0));
  for (const std::string& folder : {left, used}) fs::permissions(box.Folder(folder), fs::perms(0700));
  box.Write("a.zip", Bundle());
  const std::string line =
      "exec 9<" + box.Path(used) + " && flock 9 && \"$DITTO\" -xk " + box.Archive() + " " + box.Target();
  EXPECT_EQ(RunShell(line).status, 0);
  EXPECT_FALSE(box.Has(left));
  EXPECT_TRUE(box.Has(used) && box.Has("outside/folder") && box.Has("target/.ditto-mine"));
}

TEST(Destination, FoldersThatForbidTheirOwnerToWriteCanBeReplacedInto) {
  const Sandbox box;
  box.Write("a.zip", ZipOf({Folder("d/", 040555), Folder("d/e/", 040500), File("d/e/f")}));
  fs::permissions(box.Path(), fs::perms(0755));
  fs::permissions(box.Folder("target"), fs::perms(0777));
  // As an ordinary user: everything is possible to root.
  const std::string user = geteuid() == 0 ? "setpriv --reuid 65534 --clear-groups " : "";
  if (RunShell(user + "test -x \"$DITTO\"").status != 0) GTEST_SKIP() << "no other user can run the helper";
  for (int run = 0; run < 2; ++run) {
    const Outcome outcome = RunShell(user + "\"$DITTO\" -xk " + box.Archive() + " " + box.Target());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(box.Look("target"),
              (Snapshot{{"d", "folder 555"}, {"d/e", "folder 500"}, {"d/e/f", "file 644 content\n"}}));
  }
}
