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
  for (const char* file : {"old/file", "saved", "kept/file"}) fTree.Write(file, file);
  for (const char* link : {"old/link", "Tool.app", "alias"}) fTree.Link(link, fTree.Path("kept"));
  fTree.Link("linked", fTree.Path("kept/file"));
  fMachine.fArchive.work = [this](const FolderItem& folder) {
    Unpack(folder);
    EXPECT_EQ(fTree.Read("backup") + fTree.Read("older/file"), "savedold/file");
    EXPECT_FALSE(fTree.Has("old")) << "cleared before the expansion";
    fTree.Write(In(folder, "Demo/Tool.app/Contents/MacOS/Tool"), "tool", 0755);
    fTree.Write(In(folder, "Demo/run"), "cd /\ncat Demo/none\necho $(pwd) > '" + fTree.Path("ran") + "'\n");
  };
  fPackage.textData[29] = Here(
      "preinstallcopy=@/saved;@/backup|preinstallcopy=@/old;@/older|preinstalldelete=@/old|missing=@/x|"
      "nonsense|delete=@/alias|delete=@/none|content=UserAccount/new/deep/c|content={@/saved}|"
      "content={@/both}|content=[@/nowhere]@/y|content=@/linked|createfolder=UserAccount/made/it|"
      "delete=@/Applications/Demo/content|Tool.app=@/Tool.app|Tool.app=@/Applications/Demo/Tool.app|"
      "shellfile=run|shell=head -c 300000 /dev/zero; echo done > "
      "'@/shell'|allusersfullaccess=@/shell|shell=");
  ExpectInstallPressed();
  for (const char* message : {"Missing File: missing", "Contact Publisher", "Contact Publisher"})
    fScript.ExpectMessage(std::string("Install Error\n\n") + message);
  Run();
  for (const char* copy : {"home/new/deep/c", "both", "linked"})
    EXPECT_EQ(fTree.Look()[copy], "file 644 " + fPackage.payload) << copy;
  EXPECT_EQ(fTree.Read("saved"), "saved");
  for (const char* none : {"x", "y", "alias", "Applications/Demo/content"}) EXPECT_FALSE(fTree.Has(none));
  EXPECT_TRUE(fTree.Has("home/made/it") && fTree.Has("ran"));
  EXPECT_EQ(fTree.Look("kept"), Items("file: kept/file")) << "a link was followed";
  EXPECT_EQ(fTree.Look("Tool.app"), fTree.Look("Applications/Demo/Tool.app"));
  EXPECT_EQ(fTree.Look()["shell"], "file 666 done\n") << "more output than a pipe holds";
}

TEST_F(Actions, NoScriptTakesAwayWhatIsNotItsOwn) {
  for (const char* file : {"home/Documents/mine", "Applications/other", "unsaved/file"})
    fTree.Write(file, "kept");
  ASSERT_EQ(::mkfifo(fTree.Path("unsaved/pipe").c_str(), 0644), 0);  // it can't be saved as a whole
  fPackage.textData[29] = Here(
      "preinstallcopy=@/unsaved;@/saved|preinstalldelete=@/unsaved|preinstalldelete=@/home|"
      "delete=UserAccount/|delete=@|delete=/|delete=@/Applications|delete=@/media|delete=@/media/Setup.app|"
      "delete=@/media/Setup.app/Contents/Resources/Data2|content=@/home|"
      "content=@/media/Setup.app/Contents/Resources/Data|delete=@/temporary");
  ExpectInstallPressed();
  for (int copies = 0; copies < 2; ++copies)
    fScript.ExpectMessage("Install Error\n\nFile Copy Failed: content");
  fPackage.Write(fTree, "media/Setup.app");
  Contents expected = fTree.Look();
  RunFromDisk();
  expected.insert({{"Applications/Demo", "folder 755"}, {"Applications/Demo/content", "file 644 archive"}});
  EXPECT_EQ(fTree.Look(), expected);
}

TEST_F(Actions, ProgramsAreHeardForAsLongAsTheySayWaitAndLive) {
  fPackage.data[8] = "SetupFolder/Before";
  fTree.Write("media/Before", "", 0755);
  fMachine.fProgram = [](std::int64_t ticks) {
    return ticks < 60 * 60 ? std::string("tessarinewait") : "TessarineAbort:Not today.";
  };
  fScript.ExpectMessage("Not today.");
  RunInVain("a minute later");
  EXPECT_GE(fMachine.Ticks(), 60 * 60);

  fPackage.data[3] = "After";
  fTree.Write("media/Setup.app/Contents/Resources/After", "", 0755);
  fMachine.fMilliseconds = 0;
  fMachine.fProgramEnds = 20 * 60;
  fMachine.fProgram = [](std::int64_t) { return std::string("TessarineWait"); };
  Expect({.window = kMain, .press = "QuitBtn"});
  RunInVain("it asks to be waited for, and dies");
  EXPECT_GE(fMachine.Ticks(), 20 * 60);
  EXPECT_LT(fMachine.Ticks(), 23 * 60);
  // What it leaves there is no word of the program afterwards, whether that ends or not.
  fMachine.fProgramEnds.reset();
  const auto install = [this](const char* before, const char* said, std::int64_t seconds) {
    fPackage.data[8] = before;
    fMachine.fMilliseconds = 0;
    ExpectInstallPressed();
    Run(said);
    EXPECT_LT(fMachine.Ticks(), seconds * 60) << said;
  };
  install("", "a stale wait", 10);
  fMachine.fLaunched.clear();
  fMachine.fProgram = [](std::int64_t) { return std::string("TessarineDone:The desk is clear."); };
  fScript.ExpectMessage("The desk is clear.");
  install("SetupFolder/Before", "the text still stands there for the program afterwards", 20);
  fs::remove(fTree.Path("media/Setup.app/Contents/Resources/After"));
  install("", "one that isn't there is not waited for", 1);
}

TEST_F(Actions, ABundleSurvivesTheSharedFolderWhateverStandsThere) {
  EXPECT_TRUE(GoesThroughSharedFolder("/applications/Sub/Tool.APP/x"));
  for (const char* path : {"/Applications/Docs", "/L/Applications/T.app"})
    EXPECT_FALSE(GoesThroughSharedFolder(path));
  fTree.Write("Tool.app/Contents/Tool", "tool", 0755);
  fTree.Write("kept/file", "kept");
  const Contents bundle = fTree.Look("Tool.app");
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"a file where the folder should be", [this] { fTree.Write("shared", ""); }},
      {"a fresh folder", [this] { fs::remove(fTree.Path("shared")); }},
      {"left by an earlier run", [this] { fTree.Link("shared/Tool.app/link", fTree.Path("kept")); }},
      {"a planted link", [this] { fTree.Link("shared/Tool.app", fTree.Path("kept")); }}};
  for (const auto& [why, plant] : rows) {
    plant();
    TakeThroughSharedFolder(fTree.Path("Tool.app"));
    EXPECT_EQ(fTree.Look("Tool.app"), bundle) << why;
    EXPECT_EQ(fTree.Look("kept"), Items("file: kept")) << why;
  }
  EXPECT_EQ(fTree.Look("shared"), Contents{});
  EXPECT_LT(fMachine.Ticks(), 8 * 60) << "the way, two seconds long, was taken three times";
  const SmallDisk disk(fTree.Path("shared"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  fTree.Write("Tool.app/Contents/large", std::string(300'000, 'x'));
  TakeThroughSharedFolder(fTree.Path("Tool.app"));
  EXPECT_EQ(fTree.Read("Tool.app/Contents/large").size(), 300'000U) << "no room for a second copy";
}

TEST_F(Actions, AMachineThatWontDoIsToldBothReasonsAheadOfThePrograms) {
  fPackage.textData[24] = "MacOS11.1";
  fPackage.textData[25] = "32GB";
  fMachine.fVersion = {10, 15};
  fPackage.data[8] = "SetupFolder/Before";
  fTree.Write("media/Before", "", 0755);
  for (const char* reason : {"Mac OS X 11.1 or later is required.", "32 GB RAM is required."})
    fScript.ExpectMessage(reason);
  RunInVain();
  EXPECT_TRUE(fMachine.fLaunched.empty());
}
