// SPDX-License-Identifier: MIT
// Which orders the cleanup program takes.
#include "cleanup/Order.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/TemporaryTree.h"

namespace {

TEST(CleanupOrder, NamesOneAbsolutePath) {
  EXPECT_EQ(PathOfOrder("DeleteFile=/a/b=c.app"), "/a/b=c.app");
  EXPECT_EQ(PathOfOrder("DeleteFolder=/a"), "/a");
  for (const char* order :
       {"", "DeleteFile=", "DeleteFile=/", "DeleteFile=a", "DeleteFile=/a/../b", "DeleteFile=/a/",
        "DeleteFile=//a", "DeleteFile=/a/.", "Delete=/a", " DeleteFile=/a"})
    EXPECT_EQ(PathOfOrder(order), "") << order;
}

TEST(CleanupOrder, SparesHomesTheRootAndDisks) {
  const TemporaryTree tree;
  tree.Write("users/me/file", "");
  tree.Write("users/other.app/file", "");
  std::filesystem::create_directory_symlink(tree.Path("users"), tree.Path("link"));
  const std::vector<std::string> homes{"/", "", tree.Path("users/me")};
  EXPECT_EQ(Objection(tree.Path("users/other.app"), homes), "");
  EXPECT_EQ(Objection(tree.Path("users/me/file"), homes), "");
  EXPECT_EQ(Objection(tree.Path("link"), homes), "") << "the link itself goes, not what it leads to";
  for (const std::string& path :
       {tree.Path("users/me"), tree.Path("users"), tree.Path("link/me"), tree.Path("missing"),
        std::string("/"), std::string(), std::string("/proc")})
    EXPECT_NE(Objection(path, homes), "") << path;
}

}  // namespace
