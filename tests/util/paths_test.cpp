// SPDX-License-Identifier: MIT
// Path strings taken apart and put together.
#include "util/Paths.h"

#include <gtest/gtest.h>

#include "support/TestMachine.h"

using namespace ViewConst;

TEST(Paths, AreTakenApart) {
  const struct {
    std::string path, folder, holder, name, extension;
  } rows[] = {
      {"/X/Setup.APP/Data", "/X/Setup.APP/", "/X", "Data", ""},
      {"a/b/", "a/b/", "a/b", "", ""},
      {"name", "", "", "name", ""},
      {"", "", "", "", ""},
      {"a.b/c", "a.b/", "a.b", "c", ""},
      {"/d/a.tar.gz", "/d/", "/d", "a.tar.gz", ".gz"},
      {"/d/.hidden", "/d/", "/d", ".hidden", ".hidden"},
      {"/d/\u00E9.\xFF\xFE", "/d/", "/d", "\u00E9.\xFF\xFE", ".\xFF\xFE"},
      {"Setup.app/Data", "Setup.app/", "", "Data", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ExtractFilePath(row.path), row.folder) << row.path;
    EXPECT_EQ(MyExtractFilePath(row.path), row.holder) << row.path;
    EXPECT_EQ(ExtractFileName(row.path), row.name) << row.path;
    EXPECT_EQ(ExtractFileExt(row.path), row.extension) << row.path;
    EXPECT_EQ(ChangeFileExt(row.path, ".zip"),
              row.path.substr(0, row.path.size() - row.extension.size()) + ".zip");
  }
}

TEST(Paths, AreCutAndTurnedAround) {
  const char* const cuts[] = {"", "", "/a", "/a/b", ""};
  for (int n = 1; n <= 4; ++n) EXPECT_EQ(DirectoryPathExtract("/a/b", n), cuts[n]) << n;
  std::string path = "//";
  DropTrailingPathSeparator(path);
  EXPECT_EQ(path, "/");
  const char* const rows[][2] = {
      {"/Users/a/b", "Disk:Users:a:b"},   {"/Volumes/Other/a", "Other:a"},
      {"/Volumes/Disk/a", ":a"},          {"/Volumes/disk/a", "disk:a"},
      {"/Volumes/Other", "Other"},        {"/Volumes//a", "Disk:a"},
      {"relative/path", "relative/path"}, {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(CocoaToCarbonPath(row[0], "Disk"), row[1]) << row[0];
}

TEST(Paths, BundlesAndTheApplicationsAreFound) {
  EXPECT_EQ(ViewConst::ContentsFolder("/m/A.app/Contents/B/Contents/MacOS/Stub"), "/m/A.app/Contents");
  EXPECT_EQ(ViewConst::ContentsFolder("/m/a/contents/MacOS/Stub"), "/m/a/contents");
  EXPECT_EQ(ViewConst::ContentsFolder("/usr/bin/stub"), "/usr/bin/stub");
  EXPECT_EQ(ViewConst::BundleOf("/m/A.app/Contents/B/Contents/x"), "/m/A.app");
  const TemporaryTree tree;
  TestMachine machine(tree);
  EXPECT_EQ(MyAbsolutePath(GetApplicationFolder()), tree.Path("Applications/"));
  EXPECT_EQ(MyAbsolutePath(FolderItem(tree.Write("file", ""))), tree.Path("file"));
  EXPECT_EQ(MyAbsolutePath(FolderItem("/")) + MyAbsolutePath(std::nullopt), "/");
  machine.fExecutable = "/m/Old/Contents/Setup.app/Contents/MacOS/Stub";
  EXPECT_EQ(GetApplicationPath(), "/m/Old/Contents/") << "the last bundle counts";
}
