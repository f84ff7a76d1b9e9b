// SPDX-License-Identifier: MIT
// Which orders the cleanup program takes.
#include "cleanup/Order.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include "base/TreeDelete.h"
#include "platform/Brake.h"
#include "support/TemporaryTree.h"

TEST(CleanupOrder, NamesOneAbsolutePath) {
  EXPECT_EQ(PathOfOrder("DeleteFile=/a/b=c.app"), "/a/b=c.app");
  EXPECT_EQ(PathOfOrder("DeleteFolder=/a"), "/a");
  for (const char* order :
       {"", "DeleteFile=", "DeleteFile=/", "DeleteFile=a", "DeleteFile=/a/../b", "DeleteFile=/a/",
        "DeleteFile=//a", "DeleteFile=/a/.", "Delete=/a", " DeleteFile=/a"})
    EXPECT_EQ(PathOfOrder(order), "") << order;
}

TEST(CleanupOrder, SparesTheRootDisksAndTheFoldersOfUsersAndTheSystem) {
  const TemporaryTree tree;
  for (const char* file : {"users/me/file", "users/other.app/file"}) tree.Write(file, "");
  tree.Link("link", tree.Path("users"));
  tree.Link("users/linked", tree.Path("users/other.app"));
  tree.Link("users/my.app", tree.Path("users/me"));
  KeptFolders kept;
  for (const std::string& folder : {std::string("/"), tree.Path("users/me/"), tree.Path("users/linked")})
    kept.Add(folder);
  // A link itself goes, not what it leads to.
  for (const char* path : {"users/me/file", "link", "users/my.app", "missing"})
    EXPECT_EQ(ReasonToStay(tree.Path(path), kept), "") << path;
  for (const char* path : {"users/me", "users", "link/me", "users/linked", "users/other.app", "users/me/."})
    EXPECT_NE(ReasonToStay(tree.Path(path), kept), "") << path;
  for (const char* path : {"/", "", "a", "/proc", "/usr", "/usr/share", "/opt"})
    EXPECT_NE(ReasonToStay(path, kept), "") << path;
  KeptFolders everybodys;
  everybodys.AddEverybodys();
  EXPECT_NE(ReasonToStay(::getenv("HOME"), everybodys), "");
}

TEST(CleanupOrder, WhatIsMountedStaysWhereverItLies) {
  const TemporaryTree tree;
  tree.Write("elsewhere/kept", "kept");
  tree.Folder("Setup/mounted");
  if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      ::mount(tree.Path("elsewhere").c_str(), tree.Path("Setup/mounted").c_str(), nullptr, MS_BIND,
              nullptr) != 0)
    GTEST_SKIP() << "needs root: mounts";
  EXPECT_NE(ReasonToStay(tree.Path("Setup/mounted"), {}), "");
  EXPECT_NE(ReasonToStay(tree.Path("Setup"), {}), "");
  EXPECT_FALSE(DeleteTreeAt(tree.Path("Setup"), [] {}));
  EXPECT_EQ(tree.Read("elsewhere/kept"), "kept") << "on the same device, but not in the tree";
  ::umount(tree.Path("Setup/mounted").c_str());
}
