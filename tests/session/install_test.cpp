// SPDX-License-Identifier: MIT
// The walk from the click to an installed folder, and what stops it on the way.
#include "engine/WaitEstimate.h"
#include "session/SessionTest.h"

class Install : public SessionTest {
 protected:
  void IntoApplications() { fPackage.data[2] = "1"; }

  /// While a run goes on.
  static QWidget& MainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->findChild<QWidget*>(kMain) != nullptr) return *window;
    throw std::runtime_error("no main window");
  }
};

TEST_F(Install, IntoTheApplicationsFolderWhateverTheUserDoesMeanwhile) {
  IntoApplications();
  fPackage.data[3] = "After";
  fPackage.payload = "archive\xFF bytes";
  fPackage.textData[6] = "|Abbrechen und beenden|Jetzt installieren";
  fPackage.textData[5] = "info";
  fTree.Write("media/Setup.app/Contents/Resources/After", "", 0755);
  fTree.Write("Applications/Demo.zip", "left by a run that was cut short");
  std::vector<int> shown;
  int tried = 0;
  fMachine.fPump = [&] {
    QWidget& window = MainWindow();
    const auto& bar = Find<QProgressBar>(window, "ProgressBar1");
    if (bar.isVisible()) {
      shown.push_back(100 * bar.value() / bar.maximum());
      EXPECT_LT(bar.geometry().right(), Find<QWidget>(window, "QuitBtn").x());
    }
    const Texts texts = Shown(window);
    EXPECT_EQ(texts.at("MessageLabel"), "Install in Progress...");
    EXPECT_FALSE(texts.contains("InfoBtn"));
    EXPECT_FALSE(Find<QPushButton>(window, "InstallBtn").isEnabled());
    QTimer::singleShot(0, &window, [&window, &tried] {
      QTest::mouseClick(&Find<QPushButton>(window, "QuitBtn"), Qt::LeftButton);
      QTest::keyClick(&Find<QPushButton>(window, "QuitBtn"), Qt::Key_Space);
      QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
      QCloseEvent request;
      QCoreApplication::sendEvent(window.windowHandle(), &request);
      EXPECT_FALSE(Application::Quitting());
      ++tried;
    });
    fToolkit.DoEvents(0);
  };
  ExpectInstallPressed();
  Run();
  EXPECT_GT(tried, 0);
  EXPECT_EQ(fTree.Look("Applications"),
            (Contents{{"Demo", "folder 755"}, {"Demo/content", "file 644 archive\xFF bytes"}}));
  const std::string after = fTree.Path("media/Setup.app/Contents/Resources/After");
  EXPECT_EQ(fMachine.fLaunched, (std::vector<std::string>{after, after}));
  EXPECT_EQ(fMachine.fExpanded, std::vector{ScrambledByHand(fPackage.payload)});
  EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
  EXPECT_EQ(std::count(shown.begin(), shown.end(), 50), 1);
}

TEST_F(Install, IntoTheFolderThatTheUserPicksPastWhatIsPlantedThere) {
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
  EXPECT_EQ(fTree.Look(chosen), (Contents{{"Demo", "folder 755"}, {"Demo/content", "file 644 archive"}}));
  EXPECT_EQ(fTree.Look("outside"), (Contents{{"kept", "file 644 kept"}}));
  EXPECT_FALSE(fs::exists(std::getenv("XDG_CONFIG_HOME"))) << "the dialog keeps nothing";
}

TEST_F(Install, OverAnEarlierInstallationAsTheUserAnswers) {
  const std::pair<Step, bool> rows[] = {{{.window = ""}, true},
                                        {{.window = "Confirmation", .press = "OKBtn"}, true},
                                        {{.window = "Confirmation", .press = "CancelBtn"}, false},
                                        {{.window = "Confirmation", .close = true}, false}};
  IntoApplications();
  for (const auto& [answer, replaced] : rows) {
    fTree.Write("Applications/Demo/old", "old", 0444);
    fPackage.data[7] = answer.window.empty() ? "" : "1";
    ExpectInstallPressed();
    if (!answer.window.empty()) Expect(answer);
    replaced ? Run(answer.press) : RunInVain(answer.press);
    EXPECT_EQ(fTree.Has("Applications/Demo/old"), !replaced);
  }
}

TEST_F(Install, AFolderThatCannotBeDeletedStopsTheRunAndOtherDisksInItStay) {
  IntoApplications();
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

TEST_F(Install, AFailureIsToldOnce) {
  IntoApplications();
  fPackage.data[3] = "After";
  fPackage.textData[6] = "|||||||||||||It went wrong";
  fMachine.fArchive.succeeds = false;
  fMachine.fArchive.work = nullptr;
  const auto fail = [this](const std::string& reason) {
    ExpectInstallPressed();
    fScript.ExpectMessage("It went wrong" + (reason.empty() ? "" : "\n\n" + reason));
    Run();
  };
  fTree.Write("Applications/Demo.zip/mine", "a folder named as the archive");
  fail("");
  EXPECT_TRUE(fTree.Has("Applications/Demo.zip/mine"));
  EXPECT_LT(fMachine.Ticks(), 10 * 60);

  fs::remove_all(fTree.Path("Applications/Demo.zip"));
  // An installation stays whole, and nothing is left beside it, whatever fails and whenever it is known.
  fTree.Write("Applications/Demo/old", "old");
  fMachine.fArchive.reason = "The disk is broken.";
  fail(fMachine.fArchive.reason);
  fMachine.fArchive.succeeds = true;
  fMachine.fArchive.work = [this](const FolderItem& folder) { fTree.Folder(In(folder, "Other")); };
  fail("The archive holds no folder named Demo.");
  fMachine.fLook = {.accepted = false, .reason = "It is no archive."};
  fMachine.fLaunched.clear();
  fail("It is no archive.");
  EXPECT_EQ(fMachine.fLaunched.size(), 2U) << "only the program afterwards";
  fMachine.fLook = {.accepted = true, .reason = "", .bytes = std::uint64_t{1} << 60};
  Expect({.window = kMain, .press = "InstallBtn"});
  Expect({.window = "MessageBox", .press = "OKBtn", .look = [](QWidget& window) {
            EXPECT_TRUE(Find<QPlainTextEdit>(window, "MessageBoxText")
                            .toPlainText()
                            .contains("There is not enough room on the disk: 1152921504607 MB are needed, "));
          }});
  Run();
  EXPECT_EQ(fTree.Look("Applications"), (Contents{{"Demo", "folder 755"}, {"Demo/old", "file 644 old"}}));

  fs::remove(fTree.Path("media/Setup.app/Contents/Resources/Data2"));
  fPackage.payload.clear();
  fMachine.fLaunched.clear();
  fail("The package holds no software.");
  EXPECT_EQ(fTree.Read("Applications/Demo/old"), "old") << "nothing could take its place";
  EXPECT_TRUE(fMachine.fLaunched.back().ends_with("/After")) << "the walk goes on";
}

TEST(WaitEstimate, GrowsWithTheArchiveAndIsCutForLargeOnes) {
  const std::pair<std::uint64_t, std::int64_t> rows[] = {
      {2'999'999, 30},     {3'000'000, 60},    {30'000'000, 330},      {30'000'001, 165},
      {300'000'000, 1515}, {300'000'001, 757}, {6'000'000'000, 15'007}};
  for (const auto& [size, ticks] : rows) EXPECT_EQ(EstimateTicks(size, false), ticks) << size;
  EXPECT_EQ(EstimateTicks(300'000'001, true), 1515) << "doubled before it is cut";
}

TEST_F(Install, AnUnwatchedExpansionGetsItsTime) {
  IntoApplications();
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
