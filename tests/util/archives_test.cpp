// SPDX-License-Identifier: MIT
// The command-line tool's part in an expansion.
#include "util/Archives.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/TemporaryTree.h"
#include "support/TestMachine.h"

namespace {

TEST(Archives, GoToTheToolUnderAnyNameAndReportItsEnd) {
  const TemporaryTree tree;
  TestMachine machine(tree);
  const std::filesystem::path tool = std::filesystem::path(machine.ExecutableFile()).parent_path() / "ditto";
  std::filesystem::create_directories(tool.parent_path());
  tree.Write(tool.string().substr(tree.Path().size() + 1),
             "#!/bin/sh\n[ \"$1\" = -xk ] && [ $# = 3 ] && mkdir -p \"$3\" && cp \"$2\" \"$3/new\"\n");
  std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
  const std::string zip = tree.Write("a 'b' $(c)\n;.zip", "archive");
  const std::string folder = tree.Path("-x \"y\" `z` & *");
  EXPECT_TRUE(ViewConst::ZipFileToFolder(zip, folder, false));
  tree.Write("-x \"y\" `z` & */kept", "kept");
  EXPECT_TRUE(ViewConst::ZipFileToFolder(zip, folder, false));
  EXPECT_TRUE(tree.Has("-x \"y\" `z` & */kept"));
  EXPECT_TRUE(ViewConst::ZipFileToFolder(zip, folder, true));
  EXPECT_FALSE(tree.Has("-x \"y\" `z` & */kept"));
  EXPECT_EQ(tree.Read("-x \"y\" `z` & */new"), "archive");
  EXPECT_FALSE(ViewConst::ZipFileToFolder(tree.Path("missing"), folder, false));
  EXPECT_FALSE(ViewConst::ZipFileToFolder(zip, "relative", true));
}

}  // namespace
