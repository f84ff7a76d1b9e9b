// SPDX-License-Identifier: MIT
// What opening an item means, which program a bundle runs, and what is no file to read.
#include "platform/posix/Launch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/BinaryStream.h"
#include "support/TemporaryTree.h"

TEST(Launch, KindsOfItems) {
  const TemporaryTree tree;
  for (const char* file : {"Run.app/Contents/MacOS/Run", "program", "pack.ZIP"}) tree.Write(file, "", 0755);
  for (const char* file : {"notes.txt", ".zip/inside", "Empty.app/none"}) tree.Write(file, "");
  tree.Link("alias", "program");
  tree.Link("dangling", "none");
  const struct {
    const char* name;
    LaunchKind kind;
    const char* program;
  } rows[] = {
      {"Run.app", LaunchKind::kProgram, "Run.app/Contents/MacOS/Run"},
      {"Empty.app", LaunchKind::kNothing, ""},
      {"alias", LaunchKind::kProgram, "alias"},
      {"pack.ZIP", LaunchKind::kArchive, ""},
      {"notes.txt", LaunchKind::kDocument, ""},
      {".zip", LaunchKind::kDocument, ""},
      {"none", LaunchKind::kNothing, ""},
      {"dangling", LaunchKind::kDocument, ""},
  };
  for (const auto& row : rows) {
    const LaunchPlan plan = PlanLaunch(FolderItem(tree.Path(row.name)));
    EXPECT_EQ(plan.kind, row.kind) << row.name;
    EXPECT_EQ(plan.program, *row.program == '\0' ? "" : tree.Path(row.program)) << row.name;
  }
}

TEST(Launch, TheProgramOfABundle) {
  const std::string end = "</string></dict></plist>";
  const struct {
    std::string named;  // what the list says; empty: there is no list
    std::vector<std::string> programs;
    std::string chosen;
  } rows[] = {
      {"Named" + end, {"Named", "Demo"}, "Named"},
      {"../../../outside" + end, {"Demo"}, "Demo"},
      {"." + end, {"Demo"}, "Demo"},
      {"notes" + end, {"Demo"}, "Demo"},
      {"Nam", {"Nam", "Demo"}, "Demo"},
      {"", {"Other"}, "Other"},
      {"", {"One", "Two"}, ""},
      {"", {}, ""},
  };
  for (const auto& row : rows) {
    const TemporaryTree tree;
    tree.Write("outside", "", 0755);
    if (!row.named.empty())
      tree.Write("Demo.app/Contents/Info.plist",
                 "<plist><dict><key>CFBundleName</key><string>Other</string>\n"
                 "<key>CFBundleExecutable</key>\n <string>" +
                     row.named);
    const std::string folder = "Demo.app/Contents/MacOS/";
    tree.Write(folder + "notes", "", 0644);
    for (const std::string& name : row.programs) tree.Write(folder + name, "", 0755);
    EXPECT_EQ(BundleExecutable(FolderItem(tree.Path("Demo.app"))),
              row.chosen.empty() ? "" : tree.Path(folder + row.chosen))
        << row.named;
  }
}

TEST(BinaryStream, OpensFilesAlone) {
  const TemporaryTree tree;
  ASSERT_EQ(::mkfifo(tree.Path("pipe").c_str(), 0644), 0);
  tree.Link("dangling", "none");
  for (const char* name : {"", "pipe", "dangling", "none"})
    EXPECT_FALSE(BinaryStream::Open(FolderItem(tree.Path(name)))) << name;
  EXPECT_FALSE(BinaryStream::Open(FolderItem("/dev/full")));
}
