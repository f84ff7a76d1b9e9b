// SPDX-License-Identifier: MIT
// Where things are on the machine, and where nobody else may have put something.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/FolderItem.h"
#include "platform/posix/SpecialFolders.h"
#include "support/TestMachine.h"

namespace fs = std::filesystem;

TEST(SpecialFolders, SystemVersionsAreReadFromTheReleaseText) {
  const char* const rows[][2] = {
      {"NAME=x\nVERSION_ID=\"12.13\"\n", "12.13"}, {"VERSION_ID=12", "12.0"},
      {"VERSION_ID='22.04.1'\n", "22.4"},          {"VERSION_ID=1.x\n", "1.0"},
      {"MY_VERSION_ID=\"9\"\n", "none"},           {"VERSION_ID=\"trixie/sid\"\n", "none"},
  };
  for (const auto& row : rows) {
    long long major = -1;
    long long minor = -1;
    const bool known = ParseSystemVersion(row[0], major, minor);
    EXPECT_EQ(known ? std::to_string(major) + "." + std::to_string(minor) : "none", row[1]) << row[0];
  }
}

TEST(SpecialFolders, TheDesktopIsWhereTheUserPutIt) {
  const char* const rows[][2] = {
      {"XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n", "/h/Bureau"},
      {"#XDG_DESKTOP_DIR=\"/no\"\nXDG_DESKTOP_DIR=\"/d\u00E9\"\n", "/d\u00E9"},
      {"XDG_DESKTOP_DIR=\"relative\"\n", ""},
      {"XDG_DESKTOP_DIR=\"\"\n", ""},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(ParseDesktopFolder(row[0], "/h"), row[1]) << row[0];
}

TEST(SpecialFolders, TheTemporaryFolderIsNobodyElses) {
  const std::string name = "tessarine-" + std::to_string(::geteuid());
  for (const char* planted : {"nothing", "own", "link", "open folder", "file"}) {
    const TemporaryTree tree;
    const std::string kind = planted;
    tree.Folder("victim");
    fs::permissions(tree.Path("victim"), fs::perms(0700));
    if (kind == "link") tree.Link(name, tree.Path("victim"));
    if (kind == "file") tree.Write(name, "");
    if (kind == "own" || kind == "open folder")
      fs::permissions(tree.Folder(name), fs::perms(kind == "own" ? 0700 : 0777));
    ::setenv("TMPDIR", tree.Path().c_str(), 1);
    const std::string folder = PrivateTemporaryFolder();
    ::unsetenv("TMPDIR");
    EXPECT_EQ(folder == tree.Path(name), kind == "nothing" || kind == "own") << planted;
    EXPECT_TRUE(folder.starts_with(tree.Path(name))) << planted;
    EXPECT_TRUE(fs::is_directory(fs::symlink_status(folder))) << planted;
    EXPECT_EQ(FolderItem(folder).Permissions(), 0700U) << planted;
  }
}

TEST(FolderItem, OtherDisksInsideATreeStay) {
  const TemporaryTree tree;
  const TestMachine machine(tree);
  tree.Write("old/file", "");
  const SmallDisk disk(tree.Folder("old/sub/disk"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "no right to mount";
  tree.Write("old/sub/disk/folder/kept", "kept");
  EXPECT_FALSE(FolderItem(tree.Path("old")).DeleteTree());
  EXPECT_EQ(tree.Read("old/sub/disk/folder/kept"), "kept");
  EXPECT_FALSE(tree.Has("old/file"));
}
