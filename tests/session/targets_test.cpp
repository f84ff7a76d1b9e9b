// SPDX-License-Identifier: MIT
// Folders that an install must not go to: nothing is deleted and nothing written for them.
#include "platform/LiesIn.h"
#include "session/SessionTest.h"
#include "util/Places.h"

TEST(TargetNames, LeadNowhereElse) {
  for (const char* name : {"De mo.app", "Caf\u00E9", "...", "..x", ".hidden", "Sub/Demo", "a\\b", "-x", "~"})
    EXPECT_TRUE(ViewConst::IsInnerName(name)) << name;
  for (const char* name : {"", ".", "..", "/x", "x/", "../x", "a/..", "a/./b", "a//b", "a\nb", "a\x7F"})
    EXPECT_FALSE(ViewConst::IsInnerName(name)) << name;
  EXPECT_FALSE(ViewConst::IsInnerName(std::string("a\0b", 3)));
  EXPECT_TRUE(LiesIn("/a/b", "/a") && LiesIn("/a", "/a") && LiesIn("/a", "/"));
  EXPECT_FALSE(LiesIn("/ab", "/a") || LiesIn("/", "/a") || LiesIn("/a", "/a/b"));
}

class Targets : public SessionTest {};

TEST_F(Targets, NoNameLeadsOutOfTheChosenFolderNorToTheInstaller) {
  fTree.Write("outside/Demo/kept", "kept");
  fTree.Write("victim", "kept");
  fTree.Link("chosen/exit", fTree.Path("outside"));
  fTree.Link("chosen/up", "..");
  fTree.Link("link", fTree.Path());
  // Where the user wants it, under which name.
  const char* const rows[][2] = {
      {"chosen", "exit/Demo"},  {"chosen", "up/victim"},     {".", "media"},
      {".", "media/Setup.app"}, {"link", "media/Setup.app"}, {"media/Setup.app/Contents", "Demo"}};
  for (const auto& [parent, name] : rows) {
    fPackage.textData[7] = name;
    ExpectInstallPressed();
    const std::string folder = *parent == '.' ? fTree.Path() : fTree.Path(parent);
    Expect({.window = "SelectFolderDialog", .choose = folder});
    fScript.ExpectMessage("Installation Failed\n\nNothing can be installed to " + folder + "/" + name + ".");
    RunInVain(name);
  }
  fPackage.textData[7] = "../victim";
  ExpectInstallPressed();
  fScript.ExpectMessage("Installation Failed");
  RunInVain("before a folder is asked for");
  fPackage.textData[7] = "Demo";
  ExpectInstallPressed();
  Expect({.window = "SelectFolderDialog", .choose = "/"});
  if (::geteuid() != 0) fScript.ExpectMessage("Cannot write to selected location.");
  RunInVain("the root");
  EXPECT_TRUE(fMachine.fLaunched.empty());
}

TEST_F(Targets, AFullDiskGetsNoHalfArchiveAndOneThatRefusesWritingIsTold) {
  const SmallDisk disk(fTree.Folder("disk"), 900, 20);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  const std::pair<std::uint64_t, const char*> rows[] = {
      {0, "Installation Failed\n\nThe disk can't hold so many files: 50."},
      {2'900'000,
       "Installation Failed\n\nThere is not enough room on the disk: 4 MB are needed, 0 MB are free."},
      {0, "Cannot write to selected location."}};
  for (const auto& [bytes, message] : rows) {
    fMachine.fLook.bytes = bytes;
    fMachine.fLook.items = 50;
    ExpectInstallPressed();
    Expect({.window = "SelectFolderDialog", .choose = fTree.Path("disk")});
    fScript.ExpectMessage(message);
    if (std::string(message).starts_with("Cannot")) disk.MakeReadOnly();
    RunInVain(message);
  }
}
