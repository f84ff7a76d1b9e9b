// SPDX-License-Identifier: MIT
// What opening an item means, which program a bundle runs, and what is no file to read.
#include "platform/desktop/Launch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/BinaryStream.h"
#include "support/TemporaryTree.h"

TEST(Launch, KindsOfItems) {
  const TemporaryTree tree;
  for (const char* file : {"Run.app/Contents/MacOS/Run", "program", "pack.ZIP"}) tree.Write(file, "", 0755);
  for (const char* file : {"notes.txt", "Empty.app/none"}) tree.Write(file, "");
  tree.Link("alias", "program");
  const std::tuple<const char*, LaunchKind, const char*> rows[] = {
      {"Run.app", LaunchKind::kProgram, "Run.app/Contents/MacOS/Run"},
      {"Empty.app", LaunchKind::kNothing, nullptr},
      {"alias", LaunchKind::kProgram, "alias"},
      {"pack.ZIP", LaunchKind::kArchive, nullptr},
      {"notes.txt", LaunchKind::kDocument, nullptr},
      {"none", LaunchKind::kNothing, nullptr}};
  for (const auto& [name, kind, program] : rows) {
    const LaunchPlan plan = PlanLaunch(FolderItem(tree.Path(name)));
    EXPECT_EQ(plan.kind, kind) << name;
    EXPECT_EQ(plan.program, program == nullptr ? "" : tree.Path(program)) << name;
  }
}

TEST(Launch, TheProgramOfABundle) {
  const std::string end = "</string></dict></plist>";
  const std::string begin =
      "<plist><dict><key>CFBundleName</key><string>Other</string><key>CFBundleExecutable</key>\n <string>";
  // What the list says, empty where there is none; the programs, and the one that is chosen.
  const std::tuple<std::string, std::vector<std::string>, std::string> rows[] = {
      {"Named" + end, {"Named", "Demo"}, "Named"},
      {"../../../outside" + end, {"Demo"}, "Demo"},
      {"notes" + end, {"Demo"}, "Demo"},
      {"A &amp;amp; &lt;B&gt; &quot;&apos;" + end, {"A &amp; <B> \"'", "Demo"}, "A &amp; <B> \"'"},
      {"<!--</string><key>x</key><string>Other-->Named" + end, {"Other", "Named", "Demo"}, "Named"},
      {"</string><integer>1</integer><string>Named" + end, {"Named", "Demo"}, "Demo"},
      {"Named" + end + std::string(1U << 20, ' '), {"Named", "Demo"}, "Demo"},
      {"", {"Other"}, "Other"},
      {"", {"One", "Two"}, ""},
  };
  for (const auto& [named, programs, chosen] : rows) {
    const TemporaryTree tree;
    tree.Write("outside", "", 0755);
    if (!named.empty()) tree.Write("Demo.app/Contents/Info.plist", begin + named);
    const std::string folder = "Demo.app/Contents/MacOS/";
    tree.Write(folder + "notes", "", 0644);
    for (const std::string& name : programs) tree.Write(folder + name, "", 0755);
    EXPECT_EQ(BundleExecutable(FolderItem(tree.Path("Demo.app"))),
              chosen.empty() ? "" : tree.Path(folder + chosen))
        << named;
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
