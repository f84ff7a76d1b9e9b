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
  const auto move = [this](const char* from, const char* to) {
    return RenameFile(fTree.Path(from), fTree.Path(to));
  };
  fTree.Write("A.txt", "A");
  EXPECT_FALSE(move("A.txt", "a.TXT") || move("none", "A.txt") || move("A.txt", "home") ||
               RenameFile(fTree.Path("A.txt"), "b"));
  EXPECT_EQ(fTree.Read("A.txt"), "A");
  fTree.Write("old", "old");
  fTree.Link("b", fTree.Path("old"));
  fTree.Link("full/out", fTree.Path("old"));
  EXPECT_TRUE(move("A.txt", "b"));
  EXPECT_TRUE(move("b", "full")) << "a file over a full folder";
  EXPECT_EQ(fTree.Read("full"), "A");
  // Read-only folders can be moved, and moved over, by who owns them.
  for (const std::string name : {"locked", "new"}) {
    fTree.Write(name + "/inner", name);
    fs::permissions(fTree.Path(name), fs::perms(0555));
  }
  fTree.Folder("deep");
  EXPECT_TRUE(move("locked", "deep/locked"));
  EXPECT_TRUE(move("new", "deep/locked"));
  EXPECT_EQ(fTree.Look("deep"), Items("locked: folder 555|locked/inner: new"));
  EXPECT_TRUE(move("deep/locked", "full")) << "a folder over a file";
  EXPECT_FALSE(move("full/inner", "full")) << "what holds the item can't be replaced by it";
  fTree.Write("deep/open/inner", "open");
  EXPECT_EQ(fTree.Read("full/inner"), "new");
  EXPECT_TRUE(move("deep/open", "full"));
  EXPECT_EQ(fTree.Look("full"), Items("inner: open"));
  EXPECT_EQ(FolderItem(fTree.Path("full")).Permissions(), 0755U) << "its own mode, not the replaced one's";
  EXPECT_TRUE(fTree.Look("deep").empty()) << "what was replaced is gone";
  EXPECT_EQ(fTree.Read("old"), "old") << "no link is followed";
  for (const auto& [name, what] : fTree.Look()) EXPECT_FALSE(name.starts_with(".tessarine")) << name;
}

TEST_F(Files, MissingFoldersAreMadeUpToTheFirstObstacle) {
  GlobalsKv::KvAppInit();
  ForceDirectories(fTree.Path("a/b\u00E9/c/"), true);
  EXPECT_TRUE(DirectoryExists(fTree.Path("a/b\u00E9/c/")));
  fTree.Write("a/file", "kept");
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
  for (const char* name : {"file", "none/file", "home"}) DataFileWrite(fTree.Path(name), bytes);
  std::string text;
  DataFileRead(fTree.Path("file"), text);
  EXPECT_EQ(text, bytes);
  EXPECT_EQ(fTree.Read("victim"), "kept");
  DataFileRead(fTree.Path("home"), text);
  EXPECT_EQ(text, "");
}

TEST_F(Files, AccessIsGivenToTheItemItself) {
  const std::tuple<const char*, unsigned, unsigned> rows[] = {
      {"it's $(rm) \xFF", 0600, 0666},
      {"program", 0755, 0777},
      {"owners", 04755, 04755},  // nobody else may write what runs as its owner
      {"kept", 0600, 0600}};
  fTree.Link("link", fTree.Path("kept"));
  for (const auto& [name, mode, given] : rows) {
    fs::permissions(fTree.Write(name, ""), fs::perms(mode));
    AllUsersFullAccess(fTree.Path(name == std::string("kept") ? "link" : name));
    EXPECT_EQ(FolderItem(fTree.Path(name)).Permissions(), given) << name;
  }
  AllUsersFullAccess(fTree.Path("home"));
  EXPECT_EQ(FolderItem(fTree.Path("home")).Permissions(), 0777U);
}

TEST_F(Files, ArchivesGoToTheToolUnderAnyNameAndItsEndIsTold) {
  fTree.Write("media/Setup.app/Contents/MacOS/ditto",
              "#!/bin/sh\n[ \"$1\" = -xk ] && [ $# = 3 ] && mkdir -p \"$3\" && cp \"$2\" \"$3/new\"\n", 0755);
  const std::string zip = fTree.Write("a 'b' $(c)\n;.zip", "archive");
  const std::string name = "-x \"y\" `z` & *";
  fTree.Write(name + "/kept", "kept");
  EXPECT_TRUE(ZipFileToFolder(zip, fTree.Path(name), false));
  EXPECT_EQ(fTree.Look(name), Items("kept: kept|new: archive"));
  EXPECT_TRUE(ZipFileToFolder(zip, fTree.Path(name), true));
  EXPECT_EQ(fTree.Look(name), Items("new: archive"));
  EXPECT_FALSE(ZipFileToFolder(fTree.Path("missing"), fTree.Path(name), false));
}

TEST_F(Files, HiddenItemsAreListedAndForgottenWithTheirItem) {
  const std::string path = fTree.Write("folder/caf\u00E9", "");
  const std::string other = fTree.Write("folder/other", "");
  for (const std::string& item : {path, other, path, fTree.Path("folder/none")}) SetInvisible(item);
  EXPECT_EQ(fTree.Read("folder/.hidden"), "caf\u00E9\nother\n");
  EXPECT_FALSE(FolderItem(path).Visible());
  DeleteFile(path);
  EXPECT_EQ(fTree.Read("folder/.hidden"), "other\n");
  FolderItem(other).SetVisible(true);
  EXPECT_FALSE(fTree.Has("folder/.hidden"));
  fTree.Write("victim", "file\n");
  fTree.Link("folder/.hidden", fTree.Path("victim"));
  SetInvisible(other);
  EXPECT_TRUE(fs::is_symlink(fTree.Path("folder/.hidden"))) << "a list that is a link is the user's";
}
