// SPDX-License-Identifier: MIT
// The publisher's script and programs in whole runs.
#include <sys/stat.h>

#include "actions/SharedDetour.h"
#include "session/SessionTest.h"

class Actions : public SessionTest {
 protected:
  Actions() { fPackage.data[2] = "1"; }
};

TEST_F(Actions, TheScriptRunsEntryByEntryPastItsFailures) {
  fTree.Write("old/file", "old");
  fTree.Write("saved", "saved");
  fTree.Write("kept/file", "kept");
  for (const char* link : {"old/link", "Tool.app", "alias"}) fTree.Link(link, fTree.Path("kept"));
  fTree.Link("linked", fTree.Path("kept/file"));
  fMachine.fArchive.work = [this](const FolderItem& folder) {
    Unpack(folder);
    EXPECT_EQ(fTree.Read("backup") + fTree.Read("older/file"), "savedold");
    EXPECT_FALSE(fTree.Has("old")) << "cleared before the expansion";
    fTree.Write(In(folder, "Demo/Tool.app/Contents/MacOS/Tool"), "tool", 0755);
    fTree.Write(In(folder, "Demo/run"), "cd /\ncat Demo/none\necho $(pwd) > '" + fTree.Path("ran") + "'\n");
  };
  QString script =
      "preinstallcopy=@/saved;@/backup|preinstallcopy=@/old;@/older|preinstalldelete=@/old|missing=@/x|"
      "nonsense|delete=@/alias|delete=@/none|content=UserAccount/new/deep/c|content={@/saved}|"
      "content={@/both}|content=[@/nowhere]@/y|content=@/linked|createfolder=UserAccount/made/it|"
      "delete=@/Applications/Demo/content|Tool.app=@/Tool.app|Tool.app=@/Applications/Demo/Tool.app|"
      "shellfile=run|shell=head -c 300000 /dev/zero; echo done > '@/shell'|allusersfullaccess=@/shell|shell=";
  fPackage.textData[29] = script.replace("@", QString::fromStdString(fTree.Path())).toStdString();
  ExpectInstallPressed();
  for (const char* message : {"Missing File: missing", "Contact Publisher", "Contact Publisher"})
    fScript.ExpectMessage(std::string("Install Error\n\n") + message);
  Run();
  EXPECT_EQ(fTree.Read("home/new/deep/c") + fTree.Read("both"), fPackage.payload + fPackage.payload);
  EXPECT_EQ(fTree.Read("saved"), "saved");
  EXPECT_FALSE(fTree.Has("y") || fTree.Has("x") || fTree.Has("alias") ||
               fTree.Has("Applications/Demo/content"));
  EXPECT_TRUE(fTree.Has("home/made/it") && fTree.Has("ran"));
  EXPECT_EQ(fTree.Look("kept"), Items("file: kept")) << "a link was followed";
  EXPECT_EQ(fTree.Look()["linked"], "file 644 " + fPackage.payload);
  EXPECT_EQ(fTree.Look("Tool.app"), fTree.Look("Applications/Demo/Tool.app"));
  EXPECT_EQ(fTree.Look()["shell"], "file 666 done\n") << "more output than a pipe holds";
}

TEST_F(Actions, NoScriptTakesAwayWhatIsNotItsOwn) {
  fTree.Write("home/Documents/mine", "mine");
  fTree.Write("Applications/other", "another software");
  fTree.Write("unsaved/file", "half of it can be saved");
  ASSERT_EQ(::mkfifo(fTree.Path("unsaved/pipe").c_str(), 0644), 0);
  QString script =
      "preinstallcopy=@/unsaved;@/saved|preinstalldelete=@/unsaved|preinstalldelete=@/"
      "home|delete=UserAccount/|delete=@|delete=/|delete=@/Applications|delete=@/media|"
      "delete=@/media/Setup.app|delete=@/media/Setup.app/Contents/Resources/Data2|content=@/home|"
      "content=@/media/Setup.app/Contents/Resources/Data|delete=@/temporary";
  fPackage.textData[29] = script.replace("@", QString::fromStdString(fTree.Path())).toStdString();
  ExpectInstallPressed();
  for (int copies = 0; copies < 2; ++copies)
    fScript.ExpectMessage("Install Error\n\nFile Copy Failed: content");
  fPackage.Write(fTree, "media/Setup.app");
  Contents expected = fTree.Look();
  RunFromDisk();
  expected.insert({{"Applications/Demo", "folder 755"}, {"Applications/Demo/content", "file 644 archive"}});
  EXPECT_EQ(fTree.Look(), expected);
}

TEST_F(Actions, ProgramsAreHeardForAsLongAsTheySayWait) {
  fPackage.data[8] = "SetupFolder/Before";
  fTree.Write("media/Before", "", 0755);
  fMachine.fProgram = [](std::int64_t ticks) {
    return ticks < 60 * 60 ? std::string("tessarinewait") : "TessarineAbort:Not today.";
  };
  fScript.ExpectMessage("Not today.");
  RunInVain();
  EXPECT_GE(fMachine.Ticks(), 60 * 60);
}

TEST_F(Actions, AWaitEndsWithItsProgramAndNothingIsToldTwice) {
  fPackage.data[8] = "SetupFolder/Before";
  fPackage.data[3] = "After";
  fTree.Write("media/Before", "", 0755);
  fTree.Write("media/Setup.app/Contents/Resources/After", "", 0755);
  fMachine.fProgramEnds = 20 * 60;
  fMachine.fProgram = [](std::int64_t) { return std::string("TessarineWait"); };
  Expect({.window = kMain, .press = "QuitBtn"});
  RunInVain("it asks to be waited for, and dies");
  EXPECT_GE(fMachine.Ticks(), 20 * 60);
  EXPECT_LT(fMachine.Ticks(), 23 * 60);
  // What it leaves there is no word of the program afterwards, whether that ends or not.
  fPackage.data[8] = "";
  fMachine.fProgramEnds.reset();
  std::int64_t start = fMachine.Ticks();
  ExpectInstallPressed();
  Run("a stale wait");
  EXPECT_LT(fMachine.Ticks() - start, 10 * 60);

  fPackage.data[8] = "SetupFolder/Before";
  fMachine.fLaunched.clear();
  fMachine.fProgram = [](std::int64_t) { return std::string("TessarineDone:The desk is clear."); };
  fScript.ExpectMessage("The desk is clear.");
  ExpectInstallPressed();
  Run("the text still stands there when the program afterwards has nothing to say");

  // One that isn't there is not waited for.
  fPackage.data[8] = "";
  fs::remove(fTree.Path("media/Setup.app/Contents/Resources/After"));
  start = fMachine.Ticks();
  ExpectInstallPressed();
  Run("gone");
  EXPECT_LT(fMachine.Ticks() - start, 60);
}

TEST_F(Actions, ABundleSurvivesTheSharedFolderWhateverStandsThere) {
  EXPECT_TRUE(GoesThroughSharedFolder("/applications/Sub/Tool.APP/x"));
  EXPECT_FALSE(GoesThroughSharedFolder("/Applications/Docs") ||
               GoesThroughSharedFolder("/L/Applications/T.app"));
  fTree.Write("Tool.app/Contents/Tool", "tool", 0755);
  fTree.Write("kept/file", "kept");
  const Contents bundle = fTree.Look("Tool.app");
  const auto pass = [&](const std::string& why) {
    TakeThroughSharedFolder(fTree.Path("Tool.app"));
    EXPECT_EQ(fTree.Look("Tool.app"), bundle) << why;
    EXPECT_EQ(fTree.Read("kept/file"), "kept") << why;
  };
  fTree.Write("shared", "");
  pass("a file where the folder should be");
  fs::remove(fTree.Path("shared"));
  pass("a fresh folder");
  fTree.Write("shared/Tool.app/stale", "");
  fTree.Link("shared/Tool.app/link", fTree.Path("kept"));
  pass("left by an earlier run");
  fTree.Link("shared/Tool.app", fTree.Path("kept"));
  pass("a planted link");
  EXPECT_EQ(fTree.Look("shared"), Contents{});
  fs::permissions(fTree.Path("shared"), fs::perms(0777));
  pass("a folder in which everybody can rename");
  EXPECT_LT(fMachine.Ticks(), 8 * 60) << "the way, two seconds long, was taken three times";
  fs::permissions(fTree.Path("shared"), fs::perms(01777));
  const SmallDisk disk(fTree.Path("shared"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  fTree.Write("Tool.app/Contents/large", std::string(300'000, 'x'));
  TakeThroughSharedFolder(fTree.Path("Tool.app"));
  EXPECT_EQ(fTree.Read("Tool.app/Contents/large").size(), 300'000U) << "no room for a second copy";
}

TEST_F(Actions, AProgramsLongMessageCanBeReadOnAnyScreen) {
  std::string text = std::string(3000, 'W');
  for (int line = 0; line < 100; ++line) text += "\n" + std::to_string(line);
  fPackage.data[8] = "Before";
  fTree.Write("media/Setup.app/Contents/Resources/Before", "", 0755);
  fMachine.fProgram = [&](std::int64_t) { return "TessarineAbort:" + text; };
  Expect({.window = "MessageBox", .press = "OKBtn", .look = [&](QWidget& window) {
            const auto& area = Find<QPlainTextEdit>(window, "MessageBoxText");
            EXPECT_EQ(area.toPlainText().toStdString(), text);
            EXPECT_FALSE(area.horizontalScrollBar()->maximum() > 0);
            EXPECT_LT(window.frameGeometry().height(), window.screen()->availableSize().height());
          }});
  RunInVain();
}

TEST_F(Actions, AMachineThatWontDoIsToldBothReasons) {
  fPackage.textData[24] = "MacOS11.1";
  fPackage.textData[25] = "32GB";
  fMachine.fVersion = {10, 15};
  fPackage.data[8] = "SetupFolder/Before";
  fTree.Write("media/Before", "", 0755);
  fScript.ExpectMessage("Mac OS X 11.1 or later is required.");
  fScript.ExpectMessage("32 GB RAM is required.");
  RunInVain();
  EXPECT_TRUE(fMachine.fLaunched.empty()) << "the program before comes behind the requirements";
}
