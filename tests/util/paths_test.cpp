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
      {"/Volumes/X/Setup.app/Data", "/Volumes/X/Setup.app/", "/Volumes/X", "Data", ""},
      {"/X/Setup.APP/Data", "/X/Setup.APP/", "/X", "Data", ""},
      {"/a/b.txt", "/a/", "/a", "b.txt", ".txt"},
      {"a/b/", "a/b/", "a/b", "", ""},
      {"name", "", "", "name", ""},
      {"", "", "", "", ""},
      {"/", "/", "", "", ""},
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

TEST(Paths, AreCutAtTheirSeparators) {
  const struct {
    const char* path;
    int n;
    const char* cut;
  } rows[] = {{"/a/b", 1, ""}, {"/a/b", 2, "/a"}, {"/a/b", 3, "/a/b"},
              {"/a/b", 4, ""}, {"a", 1, "a"},     {"/a/", 3, "/a/"}};
  for (const auto& row : rows) EXPECT_EQ(DirectoryPathExtract(row.path, row.n), row.cut) << row.path << row.n;
  std::string path = "//";
  for (const char* shorter : {"/", "", ""}) {
    DropTrailingPathSeparator(path);
    EXPECT_EQ(path, shorter);
  }
}

TEST(Paths, CountFromTheStartupVolumeInColonNotation) {
  const char* const rows[][2] = {
      {"/Users/a/b", "Disk:Users:a:b"}, {"/Volumes/Other/a", "Other:a"},    {"/Volumes/Disk/a", ":a"},
      {"/Volumes/disk/a", "disk:a"},    {"/Volumes/Other", "Other"},        {"/Volumes//a", "Disk:a"},
      {"/volumes/Other/a", "Other:a"},  {"relative/path", "relative/path"}, {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(CocoaToCarbonPath(row[0], "Disk"), row[1]) << row[0];
}

TEST(Paths, FindTheBundleAndTheApplications) {
  const TemporaryTree tree;
  TestMachine machine(tree);
  EXPECT_EQ(MyAbsolutePath(GetApplicationFolder()), tree.Path("Applications/"));
  EXPECT_EQ(MyAbsolutePath(FolderItem(tree.Write("file", ""))), tree.Path("file"));
  EXPECT_EQ(MyAbsolutePath(FolderItem("/")), "/");
  EXPECT_EQ(MyAbsolutePath(std::nullopt), "");
  machine.fExecutable = "/m/Old/Contents/Setup.app/Contents/MacOS/Stub";
  EXPECT_EQ(GetApplicationPath(), "/m/Old/Contents/") << "the last bundle counts";
  machine.fExecutable = "/usr/bin/stub";
  EXPECT_EQ(GetApplicationPath(), "/usr/bin/");
}
