// SPDX-License-Identifier: MIT
// Folders that an install must not go to: nothing is deleted and nothing written for them.
#include <cstdlib>
#include <filesystem>

#include "session/SessionTest.h"

class Targets : public SessionTest {};

TEST_F(Targets, NoNameLeadsOutOfTheChosenFolder) {
  fTree.Write("victim", "kept");
  fTree.Write("outside/Demo/kept", "kept");
  fTree.Write("chosen/Demo/kept", "kept");
  fTree.Link("chosen/exit", fTree.Path("outside"));
  fTree.Link("chosen/up", "..");
  fPackage.textData[6] = "|||||||||||||Not there";
  const std::string absolute = fTree.Path("victim");
  for (const std::string& name :
       {std::string(), std::string("."), std::string(".."), std::string("../victim"),
        std::string("Demo/../.."), std::string("Demo/.."), absolute, std::string("Demo/"),
        std::string("exit/Demo"), std::string("up/victim"), std::string("De\nmo")}) {
    fPackage.textData[7] = name;
    const bool nameWillDo = name == "exit/Demo" || name == "up/victim";
    ExpectInstallPressed();
    if (nameWillDo) ExpectChosen("chosen");
    fScript.ExpectMessage("Not there");
    RunInVain(name);
    EXPECT_TRUE(fMachine.fLaunched.empty()) << name;
  }
}

TEST_F(Targets, TheRunningInstallerIsNotDeletedByItself) {
  fTree.Link("link", fTree.Path());
  for (const char* parent : {"", "link"}) {
    for (const char* name : {"media", "media/Setup.app"}) {
      fPackage.textData[7] = name;
      ExpectInstallPressed();
      ExpectChosen(parent);
      fScript.ExpectMessage("Installation Failed");
      RunInVain(name);
    }
  }
}

TEST_F(Targets, ALinkAtTheTargetGoesAndWhatItLeadsToStays) {
  fTree.Write("outside/kept", "kept");
  fTree.Folder("chosen");
  fTree.Link("chosen/Demo", fTree.Path("outside"));
  fTree.Link("chosen/Demo.zip", fTree.Path("outside/kept"));
  const TemporaryTree::Contents before = fTree.Look("outside");
  ExpectInstallPressed();
  ExpectChosen("chosen");
  Run();
  EXPECT_EQ(fTree.Look("outside"), before);
  EXPECT_EQ(fTree.Look("chosen"),
            (TemporaryTree::Contents{{"Demo", "folder 755 "}, {"Demo/content", "file 644 archive"}}));
}

TEST_F(Targets, NoUsableFolderEndsTheRunWithNothingWritten) {
  ExpectInstallPressed();
  Expect({.window = "SelectFolderDialog", .key = Qt::Key_Escape});
  RunInVain("cancelled");
  ExpectInstallPressed();
  Expect({.window = "SelectFolderDialog", .close = true});
  RunInVain("closed");
  ExpectInstallPressed();
  Expect({.window = "SelectFolderDialog", .choose = "/"});
  RunInVain("the root");
  EXPECT_TRUE(fMachine.fLaunched.empty());
}

TEST_F(Targets, TheFolderDialogKeepsNothingBetweenRuns) {
  ExpectInstallPressed();
  ExpectChosen("home");
  Run();
  EXPECT_FALSE(std::filesystem::exists(std::getenv("XDG_CONFIG_HOME")));
}

TEST_F(Targets, AFolderThatRefusesWritingIsTold) {
  const SmallDisk disk(fTree.Folder("disk"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "no right to mount";
  disk.MakeReadOnly();
  for (const char* label : {"", "Locked"}) {
    fPackage.textData[6] = label;
    ExpectInstallPressed();
    ExpectChosen("disk");
    fScript.ExpectMessage(*label == '\0' ? "Cannot write to selected location." : label);
    RunInVain(label);
  }
}
