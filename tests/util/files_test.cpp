// SPDX-License-Identifier: MIT
// Deleting, moving, making folders, whole files, rights, the expansion tool and visibility.
#include "util/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/TestMachine.h"
#include "util/Archives.h"
#include "util/GlobalsKv.h"
#include "util/Rights.h"

using namespace ViewConst;

class Files : public ::testing::Test {
 protected:
  TemporaryTree fTree;
  OrdinaryUser fUser{fTree.Path()};
  TestMachine fMachine{fTree};
};

TEST_F(Files, ReadOnlyAndDeepTreesGoAndLinksInThemAreNotFollowed) {
  fTree.Write("outside/kept", "kept");
  fTree.Write("Old.app/Contents/Frozen/file", "x", 0444);
  fTree.Link("Old.app/Contents/Frozen/folder", fTree.Path("outside"));
  fTree.Link("Old.app/up", "..");
  const std::string name(200, 'd');  // deeper than any path
  int at = ::open(fTree.Folder("Old.app/deep").c_str(), O_RDONLY | O_DIRECTORY);
  for (int depth = 0; depth < 60; ++depth) {
    ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
    const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
    ::close(std::exchange(at, next));
  }
  ::close(::openat(at, "file", O_CREAT | O_WRONLY, 0644));
  ::close(at);
  for (const char* folder : {"Old.app/Contents/Frozen", "Old.app/Contents", "Old.app"})
    fs::permissions(fTree.Path(folder), fs::perms(folder == std::string("Old.app") ? 0000 : 0555));
  const TemporaryTree::Contents outside = fTree.Look("outside");
  DeleteFolderOrApp(fTree.Path("Old.app/"));
  EXPECT_FALSE(fTree.Has("Old.app"));
  fTree.Link("link", fTree.Path("outside"));
  DeleteFolderOrApp(fTree.Path("link"));
  EXPECT_FALSE(fTree.Has("link"));
  EXPECT_EQ(fTree.Look("outside"), outside);
}

TEST_F(Files, AMoveReplacesWhateverStandsThere) {
  fTree.Write("A.txt", "A");
  EXPECT_FALSE(RenameFile(fTree.Path("A.txt"), fTree.Path("a.TXT")) || RenameFile(fTree.Path("A.txt"), "b") ||
               RenameFile(fTree.Path("none"), fTree.Path("A.txt")));
  EXPECT_EQ(fTree.Read("A.txt"), "A");
  fTree.Write("old", "old");
  fTree.Link("b", fTree.Path("old"));
  fTree.Folder("empty");
  EXPECT_TRUE(RenameFile(fTree.Path("A.txt"), fTree.Path("b")));
  EXPECT_TRUE(RenameFile(fTree.Path("b"), fTree.Path("empty")));
  EXPECT_EQ(fTree.Read("old"), "old") << "a link at the target is replaced, not written through";
  fTree.Write("full/inner", "inner");
  fTree.Link("full/out", fTree.Path("old"));
  EXPECT_TRUE(RenameFile(fTree.Path("empty"), fTree.Path("full"))) << "a file over a full folder";
  EXPECT_EQ(fTree.Read("full"), "A");
  // Read-only folders can be moved, and moved over, by who owns them.
  for (const char* name : {"locked", "new"}) {
    fTree.Write(std::string(name) + "/inner", name);
    fs::permissions(fTree.Path(name), fs::perms(0555));
  }
  fTree.Folder("deep");
  EXPECT_TRUE(RenameFile(fTree.Path("locked"), fTree.Path("deep/locked")));
  EXPECT_TRUE(RenameFile(fTree.Path("new"), fTree.Path("deep/locked")));
  EXPECT_EQ(fTree.Look("deep"),
            (TemporaryTree::Contents{{"locked", "folder 555"}, {"locked/inner", "file 644 new"}}));
  EXPECT_TRUE(RenameFile(fTree.Path("deep/locked"), fTree.Path("full"))) << "a folder over a file";
  EXPECT_EQ(fTree.Read("full/inner") + fTree.Read("old"), "newold");
  // What holds the item can't be replaced by it, and stays.
  EXPECT_FALSE(RenameFile(fTree.Path("full/inner"), fTree.Path("full")));
  EXPECT_EQ(fTree.Read("full/inner"), "new");
  fTree.Write("deep/open/inner", "open");
  EXPECT_TRUE(RenameFile(fTree.Path("deep/open"), fTree.Path("full")));
  EXPECT_EQ(fTree.Look("full"), (TemporaryTree::Contents{{"inner", "file 644 open"}}));
  EXPECT_EQ(FolderItem(fTree.Path("full")).Permissions(), 0755U) << "its own mode, not the replaced one's";
  EXPECT_TRUE(fTree.Look("deep").empty()) << "what was replaced is gone";
  for (const auto& [name, what] : fTree.Look()) EXPECT_FALSE(name.starts_with(".tessarine")) << name;
}

TEST_F(Files, MissingFoldersAreMadeUpToTheFirstObstacle) {
  GlobalsKv::KvAppInit();
  ForceDirectories(fTree.Path("a/b\u00E9/c/"), true);
  EXPECT_TRUE(DirectoryExists(fTree.Path("a/b\u00E9/c/")));
  fTree.Write("a/file", "kept");
  GlobalsKv::gConflictType = 5;
  ForceDirectories(fTree.Path("a/file/sub/x"), false);
  EXPECT_EQ(GlobalsKv::gConflictType, 0) << "nothing is pending";
  ForceDirectories(fTree.Path("a/file/sub/x"), true);
  EXPECT_EQ(GlobalsKv::gConflictType, 999);
  EXPECT_EQ(GlobalsKv::gErrorString,
            "FILE ALREADY EXISTS.\n\nA file already exists at this path: " + fTree.Path("a/file"));
  EXPECT_EQ(fTree.Read("a/file"), "kept");
  fs::permissions(fTree.Path("a"), fs::perms(0555));
  ForceDirectories(fTree.Path("a/new/x"), true);
  EXPECT_EQ(GlobalsKv::gErrorString,
            "VOLUME NOT FOUND.\n\nThis volume does not exist: \n\n" + fTree.Path("a/new"));
  fs::permissions(fTree.Path("a"), fs::perms(0755));
}

TEST_F(Files, WholeFilesAreReadAndReplaced) {
  const std::string bytes("a\0\r\n\xFF", 5);
  fTree.Write("victim", "kept");
  fTree.Link("file", fTree.Path("victim"));
  DataFileWrite(fTree.Path("file"), bytes);
  std::string text = "before";
  DataFileRead(fTree.Path("file"), text);
  EXPECT_EQ(text, bytes);
  EXPECT_EQ(fTree.Read("victim"), "kept");
  const TemporaryTree::Contents before = fTree.Look();
  for (const char* name : {"none/file", "home"}) DataFileWrite(fTree.Path(name), bytes);
  EXPECT_EQ(fTree.Look(), before);
  DataFileRead(fTree.Path("home"), text);
  EXPECT_EQ(text, "");
}

TEST_F(Files, AccessIsGivenToTheItemItself) {
  const std::string kept = fTree.Write("kept", "", 0600);
  fTree.Link("link", kept);
  const std::string hostile = fTree.Write("it's $(rm) \xFF", "", 0600);
  AllUsersFullAccess(hostile);
  EXPECT_EQ(FolderItem(hostile).Permissions(), 0666U);
  AllUsersFullAccess(fTree.Folder("home"));
  const std::string program = fTree.Write("program", "", 0755), owners = fTree.Write("owners", "", 0755);
  fs::permissions(owners, fs::perms(04755));
  for (const std::string& path : {program, owners}) AllUsersFullAccessOnMac(FolderItem(path));
  for (const char* path : {"link", "none"}) AllUsersFullAccess(fTree.Path(path));
  AllUsersFullAccessOnMac(std::nullopt);
  EXPECT_EQ(FolderItem(fTree.Path("home")).Permissions(), 0777U);
  EXPECT_EQ(FolderItem(program).Permissions(), 0777U);
  EXPECT_EQ(FolderItem(owners).Permissions(), 04755U) << "nobody else may write what runs as its owner";
  EXPECT_EQ(FolderItem(kept).Permissions(), 0600U);
}

TEST_F(Files, ArchivesGoToTheToolUnderAnyNameAndItsEndIsTold) {
  fTree.Write("media/Setup.app/Contents/MacOS/ditto",
              "#!/bin/sh\n[ \"$1\" = -xk ] && [ $# = 3 ] && mkdir -p \"$3\" && cp \"$2\" \"$3/new\"\n", 0755);
  const std::string zip = fTree.Write("a 'b' $(c)\n;.zip", "archive");
  const std::string name = "-x \"y\" `z` & *";
  fTree.Write(name + "/kept", "kept");
  EXPECT_TRUE(ZipFileToFolder(zip, fTree.Path(name), false));
  EXPECT_EQ(fTree.Read(name + "/kept") + fTree.Read(name + "/new"), "keptarchive");
  EXPECT_TRUE(ZipFileToFolder(zip, fTree.Path(name), true));
  EXPECT_FALSE(fTree.Has(name + "/kept"));
  EXPECT_FALSE(ZipFileToFolder(fTree.Path("missing"), fTree.Path(name), false));
  EXPECT_FALSE(ZipFileToFolder(zip, "relative", true));
}

TEST_F(Files, HiddenItemsAreListedAndForgottenWithTheirItem) {
  const std::string path = fTree.Write("folder/caf\u00E9", "");
  fTree.Write("folder/other", "");
  SetInvisible(fTree.Path("folder/none"));
  EXPECT_FALSE(fTree.Has("folder/.hidden"));
  for (const std::string& item : {path, fTree.Path("folder/other"), path}) SetInvisible(item);
  EXPECT_EQ(fTree.Read("folder/.hidden"), "caf\u00E9\nother\n");
  EXPECT_FALSE(FolderItem(path).Visible());
  DeleteFile(path);
  EXPECT_EQ(fTree.Read("folder/.hidden"), "other\n");
  FolderItem(fTree.Path("folder/other")).SetVisible(true);
  EXPECT_FALSE(fTree.Has("folder/.hidden"));
  fTree.Write("victim", "file\n");
  fTree.Link("folder/.hidden", fTree.Path("victim"));
  SetInvisible(fTree.Path("folder/other"));
  EXPECT_EQ(fTree.Read("victim"), "file\n") << "a list that is a link is not written through";
}
