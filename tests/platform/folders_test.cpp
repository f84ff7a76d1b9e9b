// SPDX-License-Identifier: MIT
// Where things are on the machine, and where nobody else may have put something.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/FolderItem.h"
#include "platform/desktop/SpecialFolders.h"
#include "platform/posix/SystemFacts.h"
#include "support/TemporaryTree.h"

TEST(SpecialFolders, VersionsAndTheDesktopAreReadFromTheMachinesTexts) {
  long long major = -1, minor = -1;
  EXPECT_TRUE(ParseSystemVersion("NAME=x\nVERSION_ID='22.04.1'\n", major, minor));
  EXPECT_EQ(major * 100 + minor, 2204);
  EXPECT_FALSE(ParseSystemVersion("MY_VERSION_ID=\"9\"\nVERSION_ID=\"trixie/sid\"\n", major, minor));
  EXPECT_EQ(ParseDesktopFolder("#XDG_DESKTOP_DIR=\"/no\"\nXDG_DESKTOP_DIR=\"$HOME/B\"\n", "/h"), "/h/B");
  EXPECT_EQ(ParseDesktopFolder("XDG_DESKTOP_DIR=\"relative\"\n", "/h"), "");
}

TEST(SpecialFolders, TheTemporaryFolderIsNobodyElses) {
  const std::string name = "tessarine-" + std::to_string(::geteuid());
  for (const std::string planted : {"nothing", "own", "link", "open folder", "foreign", "file"}) {
    const TemporaryTree tree;
    fs::permissions(tree.Folder("victim"), fs::perms(0700));
    if (planted == "link") tree.Link(name, tree.Path("victim"));
    if (planted == "file") tree.Write(name, "");
    if (planted == "own" || planted == "open folder" || planted == "foreign")
      fs::permissions(tree.Folder(name), fs::perms(planted == "open folder" ? 0777 : 0700));
    if (planted == "foreign" && ::chown(tree.Path(name).c_str(), 65534, 65534) != 0) continue;
    ::setenv("TMPDIR", tree.Path().c_str(), 1);
    const std::string folder = PrivateTemporaryFolder("/media/Setup.app/Contents/MacOS/Stub");
    EXPECT_EQ(PrivateTemporaryFolder(folder + "/1234/Setup.app/Contents/MacOS/Stub"), folder)
        << "a copy finds itself: " << planted;
    ::unsetenv("TMPDIR");
    EXPECT_EQ(folder == tree.Path(name), planted == "nothing" || planted == "own") << planted;
    EXPECT_TRUE(folder.starts_with(tree.Path(name))) << planted;
    EXPECT_TRUE(fs::is_directory(fs::symlink_status(folder))) << planted;
    EXPECT_EQ(FolderItem(folder).Permissions(), 0700U) << planted;
  }
}
