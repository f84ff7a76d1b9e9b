// SPDX-License-Identifier: MIT
// Copies: what they keep, what they refuse, and what stands in their way.
#include <sys/stat.h>

#include "support/TestMachine.h"
#include "util/Files.h"

using namespace ViewConst;

class Copies : public MachineTest {};

TEST_F(Copies, KeepModesTimesAndLinks) {
  const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1000);
  for (const char* file : {"from/tool", "from/Sub/\u00E9 \xFF", "from/Sub/.dot"})
    fs::last_write_time(fTree.Write(file, std::string(5'000'000, 'x'), 0751), past);
  fTree.Write("from/empty", "", 0444);
  fTree.Write("outside/kept", "kept");
  fTree.Link("from/relative", "Sub/.dot");
  fTree.Link("from/nowhere", "/none/such");
  fTree.Link("from/folder", fTree.Path("outside"));
  fs::permissions(fTree.Path("from/Sub"), fs::perms(0555));
  fs::last_write_time(fTree.Path("from/Sub"), past);
  ASSERT_TRUE(CopyFile(fTree.Path("from"), fTree.Path("to/")));
  EXPECT_EQ(fTree.Look("to"), fTree.Look("from"));
  for (const char* item : {"to/tool", "to/Sub", "to/Sub/.dot"})
    EXPECT_EQ(fs::last_write_time(fTree.Path(item)), past) << item;
  ASSERT_TRUE(CopyFile(fTree.Path("from/relative"), fTree.Path("file")));
  EXPECT_EQ(fTree.Look()["file"], fTree.Look()["from/Sub/.dot"]) << "a link named as source is followed";
}

TEST_F(Copies, RefuseWhatTheyCannotTakeAndNeverEatTheirOwnSource) {
  fTree.Write("folder/file", "bytes");
  fTree.Folder("folder/sub");
  fTree.Link("link", fTree.Path("folder"));
  ASSERT_EQ(::mkfifo(fTree.Path("pipe").c_str(), 0644), 0);
  const Contents before = fTree.Look();
  const char* const rows[][2] = {{"pipe", "copy"},
                                 {"none", "copy"},
                                 {"folder/file", "a/b"},
                                 {"folder/file", "folder/file"},
                                 {"link/file", "folder/file"},
                                 {"folder/sub/../file", "folder/file"},
                                 {"folder", "folder/"},
                                 {"folder", "folder/inner"},
                                 {"folder", "link/../folder"},
                                 {"folder/sub", "folder"}};
  for (const auto& row : rows) {
    const std::string from = fTree.Path(row[0]), to = fTree.Path(row[1]);
    EXPECT_FALSE(CopyFile(from, to) || CopyFileB(from, to)) << from << " to " << to;
    ASSERT_EQ(fTree.Look(), before) << from << " to " << to;
  }
  for (const char* inner : {"folder/inner", "link/inner"}) {
    EXPECT_FALSE(CopyFolder(fTree.Path("folder"), fTree.Path(inner))) << inner;
    EXPECT_FALSE(fTree.Has("folder/inner/inner")) << inner;
  }
}

TEST_F(Copies, ReplaceWhatStandsAtTheTarget) {
  fTree.Write("new", "new");
  fTree.Write("victim", "kept");
  fTree.Write("file", "longer than the new one");
  for (const char* link : {"planted", "late"}) fTree.Link(link, fTree.Path("victim"));
  for (const char* target : {"file", "planted"}) {
    EXPECT_TRUE(CopyFile(fTree.Path("new"), fTree.Path(target))) << target;
    EXPECT_EQ(fTree.Look()[target], "file 644 new");
  }
  EXPECT_FALSE(FolderItem(fTree.Path("new")).CopyFileTo(FolderItem(fTree.Path("late")), true));
  EXPECT_EQ(fTree.Read("victim"), "kept");
  fTree.Write("tree/sub/file", "new");
  fTree.Write("outside/file", "kept");
  fTree.Link("copy/sub", fTree.Path("outside"));
  EXPECT_TRUE(CopyFolder(fTree.Path("tree"), fTree.Path("copy")));
  EXPECT_EQ(fTree.Look("copy"), fTree.Look("tree"));
  EXPECT_EQ(fTree.Read("outside/file"), "kept");
  fTree.Write("full/inner/old", "old");
  EXPECT_FALSE(CopyFile(fTree.Path("new"), fTree.Path("full")));
  EXPECT_EQ(fTree.Read("full/inner/old"), "old");
  EXPECT_TRUE(CopyFileB(fTree.Path("new"), fTree.Path("full")));
  EXPECT_EQ(fTree.Read("full"), "new");
}

TEST_F(Copies, GoOnPastAnItemThatFailsAndSaySo) {
  for (char name = 'a'; name <= 'z'; ++name) fTree.Write(std::string("from/sub/") + name, "new");
  ASSERT_EQ(::mkfifo(fTree.Path("from/sub/pipe").c_str(), 0644), 0);
  fTree.Write("to/sub/b", "old");
  EXPECT_FALSE(CopyFolder(fTree.Path("from"), fTree.Path("to")));
  EXPECT_EQ(fTree.Look("to/sub").size(), 26U) << "the pipe alone is missing";
  EXPECT_EQ(fTree.Read("to/sub/b"), "new");
}

TEST_F(Copies, FailOnAFullDisk) {
  const SmallDisk disk(fTree.Folder("disk"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  const std::string large = fTree.Write("from/large", std::string(300'000, 'x'));
  for (const char* kept : {"disk/copy", "disk/folder/large"}) fTree.Write(kept, "the user's");
  fTree.Write("from/other", fTree.Read("from/large"));
  const Contents before = fTree.Look("disk");
  EXPECT_FALSE(CopyFile(large, fTree.Path("disk/copy")));
  EXPECT_FALSE(CopyFolder(fTree.Path("from"), fTree.Path("disk/folder")));
  EXPECT_FALSE(RenameFile(large, fTree.Path("disk/large")));
  EXPECT_EQ(fTree.Look("disk"), before) << "neither cut nor gone, and no half of a new one";
  EXPECT_EQ(fTree.Read("from/large").size(), 300'000U) << "a move that fails loses nothing";
  EXPECT_TRUE(RenameFile(fTree.Write("small", "moved"), fTree.Path("disk/small")));
  EXPECT_EQ(fTree.Read("disk/small"), "moved") << "a move between disks copies";
  EXPECT_FALSE(fTree.Has("small"));
}
