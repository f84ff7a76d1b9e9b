// SPDX-License-Identifier: MIT
// How one item takes another's place, also where the file system can't exchange two.
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstddef>
#include <thread>

#include "platform/BinaryStream.h"
#include "platform/PrivateFolder.h"
#include "platform/UnnamedFile.h"
#include "support/TestMachine.h"

/// For this thread, as on a file system of another machine.
static void ForbidExchange() {
  sock_filter filter[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program{std::size(filter), filter};
  ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
  ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0), 0);
}

class Replacing : public MachineTest {
 protected:
  FolderItem Item(const std::string& name) const { return FolderItem(fTree.Path(name)); }
};

TEST_F(Replacing, TheNewOneStandsAndNothingIsLeft) {
  for (const bool exchanges : {true, false}) {
    fs::permissions(fTree.Folder("place/old/sub"), fs::perms(0555));
    fTree.Write("place/old/file", "old", 0444);
    fs::permissions(fTree.Path("place/old"), fs::perms(0555));
    fTree.Write("new/file", "new");
    std::thread([&] {
      if (!exchanges) ForbidExchange();
      EXPECT_EQ(Item("new").MoveFileTo(Item("place/old")), FolderItem::Moved::Yes);
    }).join();
    EXPECT_EQ(fTree.Look("place"), Items("old/|old/file: new")) << exchanges;
    EXPECT_FALSE(fTree.Has("new"));
    fs::remove_all(fTree.Path("place/old"));
  }
}

TEST_F(Replacing, HiddenFoldersGoWithTheirRunWhereverTheyAre) {
  fTree.Folder("chosen");
  const std::optional<UnnamedFile> file = UnnamedFile::Make(Item("chosen"));
  for (const char* text : {"longer", "text"}) ASSERT_TRUE(BinaryStream::Create(file->Item())->Write(text));
  EXPECT_EQ(BinaryStream::Open(file->Item())->ReadAll(), "text");
  EXPECT_EQ(fTree.Look("chosen"), Contents{}) << "a file without a name";
  {
    const std::optional<PrivateFolder> place = PrivateFolder::Make(Item("chosen"));
    EXPECT_EQ(place->Item().Permissions(), 0700U);
    PrivateFolder::TidyUp(Item("chosen"));
    EXPECT_TRUE(place->InPlace()) << "a run that lives keeps its own";
    fTree.Write("chosen/" + place->Item().Name() + "/Demo/file", "");
    fs::rename(fTree.Path("chosen"), fTree.Path("moved"));
    fTree.Write("chosen/" + place->Item().Name() + "/kept", "another's");
    EXPECT_FALSE(place->InPlace());
  }
  EXPECT_EQ(fTree.Look("moved"), Contents{});
  EXPECT_EQ(fTree.Look("chosen").size(), 2U);
}

TEST_F(Replacing, WhatCannotGoIsKnownBefore) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs root: other users' items";
  const auto looks = [this](const char* item) { return Item(item).CanBeDeleted(); };
  fTree.Write("own/sub/file", "");
  fTree.Write("sticky/own/file", "");
  fTree.Write("sticky/theirs", "");
  fTree.Write("foreign/file", "");
  fTree.Folder("empty/inner");
  fs::permissions(fTree.Path("sticky"), fs::perms(01777));
  for (const char* item : {"own", "own/sub", "own/sub/file", "sticky/own", "sticky/own/file", "empty"})
    ASSERT_EQ(::chown(fTree.Path(item).c_str(), 65534, 65534), 0);
  const OrdinaryUser user(fTree.Path());
  for (const char* item : {"own", "sticky/own", "empty"}) EXPECT_TRUE(looks(item)) << item;
  for (const char* item : {"sticky", "sticky/theirs", "foreign"}) EXPECT_FALSE(looks(item)) << item;
  EXPECT_EQ(Item("own").RoomTaken().items, 3U);
  EXPECT_EQ(Item("empty").MoveFileTo(Item("foreign")), FolderItem::Moved::No);
  EXPECT_TRUE(fTree.Has("foreign/file") && fTree.Has("empty/inner"));
}
