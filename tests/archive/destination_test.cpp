// SPDX-License-Identifier: MIT
// What stands in the target folder already.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "archive/Sandbox.h"
#include "platform/archive/FolderCache.h"
#include "platform/posix/Descriptor.h"

namespace fs = std::filesystem;

namespace ziptest {
namespace {

Zip Bundle() {
  Zip zip;
  zip.items = {File("f", "new"), File("d/f", "new"), File("d/e/g", "new"), Link("l", "f")};
  return zip;
}

TEST(Destination, MergesItemByItem) {
  const Sandbox box;
  fs::create_directories(box.Target() + "/d/e");
  Write(box.Target() + "/f", "old");
  Write(box.Target() + "/d/kept", "old");
  Write(box.Target() + "/d/e/g", "old");
  Write(box.Target() + "/l", "a file before");
  ASSERT_EQ(box.Expand(Bundle()), "");
  EXPECT_EQ(Look(box.Target()), (Snapshot{{"f", "file 644 new"},
                                          {"d", "folder 755"},
                                          {"d/f", "file 644 new"},
                                          {"d/kept", "file 644 old"},
                                          {"d/e", "folder 755"},
                                          {"d/e/g", "file 644 new"},
                                          {"l", "link f"}}));
}

TEST(Destination, NeverWritesThroughWhatIsPlanted) {
  const struct {
    const char* why;
    std::string plant;  // shell, in the target folder
    bool replaced;
  } rows[] = {
      {"a link under a file's name", "ln -s ../outside f", true},
      {"a dangling link", "ln -s ../new-outside f", true},
      {"a hard link", "ln ../outside f", true},
      {"a FIFO", "mkfifo f", true},
      {"a link on the way", "ln -s ../folder d", false},
      {"a link deeper on the way", "mkdir d; ln -s ../../folder d/e", false},
      {"a file on the way", "touch d", false},
      {"a folder under a file's name", "mkdir f", false},
      {"a folder under a link's name", "mkdir l", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const Sandbox box;
    fs::create_directories(box.Target());
    fs::create_directories(box / "folder");
    Write(box / "outside", "untouched");
    ASSERT_EQ(RunShell("cd " + box.Target() + " && " + row.plant).status, 0);
    const Snapshot before = Look(box.Target());
    EXPECT_EQ(box.Expand(Bundle()) == "", row.replaced);
    EXPECT_EQ(Read(box / "outside"), "untouched");
    EXPECT_TRUE(fs::is_empty(box / "folder"));
    EXPECT_FALSE(fs::exists(box / "new-outside"));
    if (row.replaced)
      EXPECT_EQ(Look(box.Target())["f"], "file 644 new");
    else
      EXPECT_EQ(Look(box.Target()), before);
  }
}

TEST(Destination, FoldersAreNeverEnteredThroughALink) {
  // As if the link came after all checks.
  const Sandbox box;
  auto plan = archive::ReadPlan(archive::MemorySource(Bundle().Bytes()), 1);
  ASSERT_TRUE(plan.Ok());
  fs::create_directories(box / "elsewhere");
  fs::create_symlink(box / "elsewhere", box / "d");
  const Descriptor root(open((box / ".").c_str(), O_PATH | O_DIRECTORY));
  archive::MadeFolders made(*plan);
  archive::FolderCache folders(*plan, root.Get(), 4, &made);
  EXPECT_EQ(folders.Open(plan->tree.Find(archive::kRoot, "d")), -1);
}

TEST(Destination, NewReplacesNothing) {
  const Sandbox box;
  Zip zip;
  zip.items = {File("a/f", "new"), File("Notes.txt", "new"), File("d/f", "new")};
  EXPECT_NE(box.Expand(zip, true).find("missing"), std::string::npos);
  EXPECT_FALSE(fs::exists(box.Target()));
  // What the archive is named after must be new, and nothing comes without it.
  fs::create_directories(box.Target() + "/a");
  EXPECT_NE(box.Expand(zip, true).find("holds \"a\" already"), std::string::npos);
  EXPECT_EQ(Look(box.Target()).size(), 1u);
  fs::remove(box.Target() + "/a");
  for (const char* taken : {"Notes.txt", "Notes 2.txt", "d/mine"}) {
    fs::create_directories(fs::path(box.Target() + "/" + taken).parent_path());
    Write(box.Target() + "/" + taken, "mine");
  }
  EXPECT_EQ(box.Expand(zip, true), "");
  EXPECT_EQ(Look(box.Target()), (Snapshot{{"Notes.txt", "file 644 mine"},
                                          {"Notes 2.txt", "file 644 mine"},
                                          {"Notes 3.txt", "file 644 new"},
                                          {"a", "folder 755"},
                                          {"a/f", "file 644 new"},
                                          {"d", "folder 755"},
                                          {"d/mine", "file 644 mine"},
                                          {"d 2", "folder 755"},
                                          {"d 2/f", "file 644 new"}}));
}

TEST(Destination, LeftoversOfKilledRunsGoAndThoseOfRunningOnesStay) {
  const Sandbox box;
  const std::string left = box.Target() + "/.ditto-99-0123456789abcdef",
                    used = box.Target() + "/.ditto-98-0123456789abcdef";
  std::string deep = left;
  for (int i = 0; i < 40; ++i) deep += "/0";  // deeper than descriptors are held
  fs::create_directories(deep + "/1");
  Write(deep + "/2", "x");
  fs::create_symlink(box / "outside", left + "/link");
  fs::create_directories(box / "outside/folder");
  fs::create_directories(used);
  ASSERT_EQ(RunShell("chmod 700 " + left + " " + used + " && chmod 0 " + left + "/0/0").status, 0);
  Write(box.Archive(), Bundle().Bytes());
  const std::string line =
      "exec 9<" + used + " && flock 9 && \"$DITTO\" -xk " + box.Archive() + " " + box.Target();
  EXPECT_EQ(RunShell(line).status, 0);
  EXPECT_FALSE(fs::exists(left));
  EXPECT_TRUE(fs::exists(used));
  EXPECT_TRUE(fs::exists(box / "outside/folder"));
}

TEST(Destination, FoldersThatForbidTheirOwnerToWriteCanBeReplacedInto) {
  const Sandbox box;
  Zip zip;
  zip.items = {Folder("d/", 040555), Folder("d/e/", 040500), File("d/e/f")};
  // As an ordinary user: everything is possible to root.
  const bool root = geteuid() == 0;
  Write(box.Archive(), zip.Bytes());
  ASSERT_EQ(RunShell("chmod 755 " + (box / ".") + " && mkdir -m 777 " + box.Target()).status, 0);
  const std::string user = root ? "setpriv --reuid 65534 --clear-groups " : "";
  if (root && RunShell(user + "test -x \"$DITTO\"").status != 0)
    GTEST_SKIP() << "no other user can run the helper";
  for (int run = 0; run < 2; ++run) {
    const Outcome outcome = RunShell(user + "\"$DITTO\" -xk " + box.Archive() + " " + box.Target());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(Look(box.Target()),
              (Snapshot{{"d", "folder 555"}, {"d/e", "folder 500"}, {"d/e/f", "file 644 content\n"}}));
  }
}

}  // namespace
}  // namespace ziptest
