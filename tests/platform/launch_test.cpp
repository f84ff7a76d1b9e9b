// SPDX-License-Identifier: MIT
// What opening an item means, and which program a bundle runs.
#include "platform/posix/Launch.h"

#include <gtest/gtest.h>

#include "support/TemporaryTree.h"

namespace {

std::string List(const std::string& executable) {
  return "<plist><dict><key>CFBundleName</key><string>Other</string>\n<key>CFBundleExecutable</key>\n "
         "<string>" +
         executable + "</string></dict></plist>";
}

}  // namespace

TEST(Launch, KindsOfItems) {
  const TemporaryTree tree;
  tree.Write("Run.app/Contents/MacOS/Run", "", 0755);
  tree.Folder("Empty.app");
  tree.Folder("Folder");
  tree.Write("program", "", 0755);
  tree.Write("pack.ZIP", "", 0755);
  tree.Write("notes.txt", "");
  tree.Write(".zip/inside", "");
  tree.Link("alias", "program");
  tree.Link("dangling", "none");
  const struct {
    const char* name;
    LaunchKind kind;
    const char* program;
  } rows[] = {
      {"Run.app", LaunchKind::kProgram, "Run.app/Contents/MacOS/Run"},
      {"Empty.app", LaunchKind::kNothing, ""},
      {"Folder", LaunchKind::kDocument, ""},
      {"program", LaunchKind::kProgram, "program"},
      {"alias", LaunchKind::kProgram, "alias"},
      {"pack.ZIP", LaunchKind::kArchive, ""},
      {"notes.txt", LaunchKind::kDocument, ""},
      {".zip", LaunchKind::kDocument, ""},
      {"none", LaunchKind::kNothing, ""},
  };
  for (const auto& row : rows) {
    const LaunchPlan plan = PlanLaunch(FolderItem(tree.Path(row.name)));
    EXPECT_EQ(plan.kind, row.kind) << row.name;
    EXPECT_EQ(plan.program, *row.program == '\0' ? "" : tree.Path(row.program)) << row.name;
  }
  EXPECT_NE(PlanLaunch(FolderItem(tree.Path("dangling"))).kind, LaunchKind::kProgram);
}

TEST(Launch, TheProgramOfABundle) {
  const struct {
    const char* why;
    std::string list;
    std::vector<std::pair<std::string, unsigned>> programs;
    std::string chosen;
  } rows[] = {
      {"the list names it", List("Named"), {{"Named", 0755}, {"Demo", 0755}}, "Named"},
      {"the list names none that is there", List("Gone"), {{"Other", 0755}, {"Demo", 0755}}, "Demo"},
      {"the list leads out of the bundle", List("../../../outside"), {{"Demo", 0755}}, "Demo"},
      {"the list names the folder itself", List("."), {{"Demo", 0755}}, "Demo"},
      {"the named file doesn't run", List("Named"), {{"Named", 0644}, {"Demo", 0755}}, "Demo"},
      {"a list that breaks off",
       "<key>CFBundleExecutable</key><string>Nam",
       {{"Nam", 0755}, {"Demo", 0755}},
       "Demo"},
      {"the only one", "", {{"Other", 0755}, {"notes.txt", 0644}}, "Other"},
      {"two, and none is named", "", {{"One", 0755}, {"Two", 0755}}, ""},
      {"none", "", {{"notes.txt", 0644}}, ""},
  };
  for (const auto& row : rows) {
    const TemporaryTree tree;
    tree.Write("outside", "", 0755);
    if (!row.list.empty()) tree.Write("Demo.app/Contents/Info.plist", row.list);
    const std::string folder = "Demo.app/Contents/MacOS/";
    for (const auto& [name, mode] : row.programs) tree.Write(folder + name, "", mode);
    EXPECT_EQ(BundleExecutable(FolderItem(tree.Path("Demo.app"))),
              row.chosen.empty() ? "" : tree.Path(folder + row.chosen))
        << row.why;
  }
}
