// SPDX-License-Identifier: MIT
// The walk from the click to an installed folder, and what stops it on the way.
#include "engine/WaitEstimate.h"
#include "session/SessionTest.h"

class Install : public SessionTest {
 protected:
  Install() { fPackage.data[2] = "1"; }
};

TEST_F(Install, IntoTheApplicationsFolderWhateverTheUserDoesMeanwhile) {
  fPackage.data[3] = "After";
  fPackage.payload = "archive\xFF bytes";
  fPackage.textData[6] = "|Abbrechen und beenden|Jetzt installieren";
  fPackage.textData[5] = "info";
  fTree.Write("media/Setup.app/Contents/Resources/After", "", 0755);
  fTree.Write("Applications/Demo.zip", "left by a run that was cut short");
  std::vector<int> shown;
  int tried = 0;
  fMachine.fPump = [&] {
    QWidget* main = MainWindow();
    const auto& bar = Find<QProgressBar>(*main, "ProgressBar1");
    auto& quit = Find<QPushButton>(*main, "QuitBtn");
    if (bar.isVisible()) shown.push_back(100 * bar.value() / bar.maximum());
    EXPECT_TRUE(!bar.isVisible() || bar.geometry().right() < quit.x());
    const Texts texts = Shown(*main);
    EXPECT_EQ(texts.at("MessageLabel"), "Install in Progress...");
    EXPECT_FALSE(texts.contains("InfoBtn") || Find<QPushButton>(*main, "InstallBtn").isEnabled());
    QTimer::singleShot(0, main, [main, &quit, &tried] {
      QTest::mouseClick(&quit, Qt::LeftButton);
      QTest::keyClick(&quit, Qt::Key_Space);
      QTest::keyClick(main, Qt::Key_Q, Qt::ControlModifier);
      QCloseEvent request;
      QCoreApplication::sendEvent(main->windowHandle(), &request);
      EXPECT_FALSE(Application::Quitting());
      ++tried;
    });
    fToolkit.DoEvents(0);
  };
  ExpectInstallPressed();
  Run();
  EXPECT_GT(tried, 0);
  EXPECT_EQ(fTree.Look("Applications"), Items("Demo/|Demo/content: archive\xFF bytes"));
  const std::string after = fTree.Path("media/Setup.app/Contents/Resources/After");
  EXPECT_EQ(fMachine.fLaunched, (std::vector<std::string>{after, after}));
  EXPECT_EQ(fMachine.fExpanded, std::vector{ScrambledByHand(fPackage.payload)});
  EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
  EXPECT_EQ(std::count(shown.begin(), shown.end(), 50), 1);
}

TEST_F(Install, IntoTheFolderThatTheUserPicksPastWhatIsPlantedThere) {
  fPackage.data[2] = "";
  fPackage.textData[1] = "\xEF\xBB\xBF";  // no agreement
  const std::string chosen = "home/caf\u00E9 it's";
  fTree.Write("outside/kept", "kept");
  fTree.Link(chosen + "/Demo", fTree.Path("outside"));
  fTree.Link(chosen + "/Demo.zip", fTree.Path("outside/kept"));
  const auto look = [this](QWidget& dialog) {
    EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).directory().path().toStdString(), fTree.Path("media"));
  };
  ExpectInstallPressed();
  Expect({.window = "SelectFolderDialog", .choose = fTree.Path(chosen), .look = look});
  Run();
  EXPECT_EQ(fTree.Look(chosen), Items("Demo/|Demo/content: archive"));
  EXPECT_EQ(fTree.Look("outside"), Items("kept: kept"));
  EXPECT_FALSE(fs::exists(std::getenv("XDG_CONFIG_HOME"))) << "the dialog keeps nothing";
}

TEST_F(Install, AFolderThatCannotBeDeletedStopsTheRunAndOtherDisksInItStay) {
  fTree.Write("Applications/Demo/old", "old");
  const SmallDisk disk(fTree.Folder("Applications/Demo/disk"), 64);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  fTree.Write("Applications/Demo/disk/folder/kept", "kept");
  ExpectInstallPressed();
  fScript.ExpectMessage(
      "Install Aborted\n\nUnable to delete existing installed folder.  Reboot the computer and try again or "
      "manually delete the previously installed application folder.");
  Run();
  EXPECT_EQ(fTree.Read("Applications/Demo/disk/folder/kept"), "kept");
  EXPECT_EQ(fTree.Read("Applications/Demo/old"), "old") << "known before anything is touched";
  EXPECT_TRUE(fMachine.fLaunched.empty());
}

TEST_F(Install, AFailureIsToldOnceAndAnInstallationStaysWhole) {
  fPackage.data[3] = "After";
  fPackage.textData[6] = "|||||||||||||It went wrong";
  fTree.Write("Applications/Demo.zip/mine", "a folder named as the archive");
  fTree.Write("Applications/Demo/old", "old");
  const Contents stood = fTree.Look("Applications");
  const auto fail = [&](const std::string& reason) {
    fMachine.fLaunched.clear();
    ExpectInstallPressed();
    fScript.ExpectMessage("It went wrong" + (reason.empty() ? "" : "\n\n" + reason));
    Run(reason);
    EXPECT_EQ(fTree.Look("Applications"), stood) << reason;
    EXPECT_TRUE(fMachine.fLaunched.back().ends_with("/After")) << "the walk goes on";
  };
  fMachine.fArchive.succeeds = false;
  for (const char* reason : {"", "The disk is broken."}) {
    fMachine.fArchive.reason = reason;
    fail(reason);
  }
  fMachine.fArchive.succeeds = true;
  fMachine.fArchive.work = [this](const FolderItem& folder) { fTree.Folder(In(folder, "Other")); };
  fail("The archive holds no folder named Demo.");
  fMachine.fLook = {.accepted = false, .reason = "It is no archive."};
  fail("It is no archive.");
  EXPECT_EQ(fMachine.fLaunched.size(), 2U) << "only the program afterwards";
  fMachine.fLook.accepted = true;
  fs::remove(fTree.Path("media/Setup.app/Contents/Resources/Data2"));
  fPackage.payload.clear();
  fail("The package holds no software.");
}

TEST_F(Install, AnUnwatchedExpansionGetsItsTime) {
  const std::pair<std::uint64_t, std::int64_t> rows[] = {
      {2'999'999, 30},     {3'000'000, 60},    {30'000'000, 330},      {30'000'001, 165},
      {300'000'000, 1515}, {300'000'001, 757}, {6'000'000'000, 15'007}};
  for (const auto& [size, ticks] : rows) EXPECT_EQ(EstimateTicks(size, false), ticks) << size;
  EXPECT_EQ(EstimateTicks(300'000'001, true), 1515) << "doubled before it is cut";
  fMachine.fArchive.watched = false;
  std::int64_t start = 0;
  fMachine.fArchive.work = [&](const FolderItem& folder) {
    Unpack(folder);
    start = fMachine.Ticks();
  };
  for (const auto& [version, ticks] : {std::pair(std::pair(10, 13), 60), {std::pair(13, 12), 30}}) {
    fMachine.fVersion = version;
    ExpectInstallPressed();
    Run();
    EXPECT_GT(fMachine.Ticks() - start, ticks);
    EXPECT_LE(fMachine.Ticks() - start, ticks + 3);
  }
}
