// SPDX-License-Identifier: MIT
// Where the installer runs from, and a Payload that comes in pieces.
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "dialogs/Translocation.h"
#include "package/SplitSet.h"
#include "platform/posix/Process.h"
#include "session/Relocation.h"
#include "session/SessionTest.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

TEST(Location, IsReadFromThePathAlone) {
  const std::tuple<const char*, const char*, RunsFrom> rows[] = {
      {"/t/own/1000/", "/t/own/", RunsFrom::OwnCopy},
      {"/t/own/", "/t/own/", RunsFrom::TemporaryFolder},
      {"/t/own/999/", "/t/own/", RunsFrom::TemporaryFolder},
      {"/t/own/12345/", "/t/own/", RunsFrom::TemporaryFolder},
      {"/t/own/12a4/", "/t/own/", RunsFrom::TemporaryFolder},
      {"/t/own/1000/x/", "/t/own/", RunsFrom::TemporaryFolder},
      {"/t/own/AppTranslocation/1000/", "/t/own/AppTranslocation/", RunsFrom::TemporaryFolder},
      {"/t/owner/1000/", "/t/own/", RunsFrom::Anywhere},
      {"/media/cd/", "", RunsFrom::Anywhere},
  };
  for (const auto& [path, temporary, place] : rows) EXPECT_EQ(ReadLocation(path, temporary), place) << path;
}

TEST(SplitSet, NumberedPiecesComeFirstAndTheirFoldersInTurn) {
  const std::tuple<std::set<std::string>, int, const char*> rows[] = {
      {{"/a/Data#2", "/a/Data#End"}, 2, "/a/Data#2"},    {{"/a/Data#2", "/a/Data#End"}, 3, "/a/Data#End"},
      {{"/b/Data#2", "/a/Data#End"}, 2, "/b/Data#2"},    {{"/a/Data#10"}, 10, "/a/Data#10"},
      {{"/a/Data#02", "/a/data#2", "/a/Data#3"}, 2, ""},
  };
  for (const auto& [files, index, path] : rows) {
    const auto piece = FindPiece({"/a/", "/b/"}, index,
                                 [&there = files](const std::string& name) { return there.contains(name); });
    EXPECT_EQ(piece ? piece->path : "", path);
    EXPECT_EQ(piece && piece->last, std::string(path).ends_with("End"));
  }
  EXPECT_TRUE(IsFolderText("/media/My CD/") && IsFolderText("/"));
  for (const char* text : {"", "media/", "/media/cd", "/media/cd/\n", "TessarineWait"})
    EXPECT_FALSE(IsFolderText(text)) << text;
}

class Split : public SessionTest {
 protected:
  Split() {
    fPackage.data[2] = "1";
    fPackage.data[3] = "After";
    fPackage.payload.clear();
    fTree.Write("media/Setup.app/Contents/Resources/After", "", 0755);
    fTree.Write("media/Setup.app/Contents/Resources/Data#1", ScrambledByHand(fWhole).substr(0, 5));
    fPackage.textData[6] = "|||||||||||||No luck|||Next, please|||At work";
  }
  /// As if it ran from the copy that an installer on the medium has made.
  void BeTheCopy() {
    fPackage.Write(fTree, "media/Setup.app");
    fs::create_directories(fTree.Path("temporary/1234"));
    fs::copy(fTree.Path("media/Setup.app"), fTree.Path("temporary/1234/Setup.app"),
             fs::copy_options::recursive);
    fMachine.fExecutable = fTree.Path("temporary/1234/Setup.app/Contents/MacOS/TessarineStub");
    fTree.Write("temporary/1234/Setup.app/Contents/MacOS/eject",
                "#!/bin/sh\necho x >> " + fTree.Path("ejected") + "\n", 0755);
  }
  void Piece(const std::string& name, std::size_t from, std::size_t count = std::string::npos) const {
    fTree.Write("media/" + name, ScrambledByHand(fWhole).substr(from, count));
  }
  void ExpectPrompt(const char* answer, const std::function<void()>& meanwhile = nullptr) {
    Expect({.window = "MessageText", .press = answer, .look = [meanwhile](QWidget& window) {
              EXPECT_EQ(Find<QPlainTextEdit>(window, "MessageText").toPlainText(), "Next, please");
              EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
              if (meanwhile) meanwhile();
            }});
  }

  const std::string fWhole = "The whole of the archive, in pieces";
};

TEST_F(Split, TheInstallerHandsOverToACopyAndDoesNothingMore) {
  fPackage.textData[30] = "1";
  fPackage.textData[23] = "option,o.zip,o";
  for (const char* item : {"1234/Setup.app/left", "12345/kept", "5678/kept"})
    fTree.Write(std::string("temporary/") + item, "left");
  const std::string sleeper = fTree.Path("temporary/5678/sleep");
  fs::copy_file("/bin/sleep", sleeper);
  const PipedProcess running = StartPiped(sleeper, {"60"});
  while (!fMachine.IsRunBelow(FolderItem(fTree.Path("temporary/5678")))) ::usleep(1000);
  const auto run = [this](const char* told, const char* why) {
    fMachine.fLaunched.clear();
    ExpectInstallPressed();
    Expect({.window = "Select Options", .press = "ContinueBtn"});
    if (*told != '\0') fScript.ExpectMessage(told);
    Run(why);
    EXPECT_EQ(fMachine.fLaunched.size(), *told == '\0' ? 1U : 0U)
        << "neither an archive nor a program: " << why;
  };
  run("", "a copy");
  EndChild(running.id);
  const fs::path program = fMachine.fLaunched.front();
  EXPECT_TRUE(program.string().ends_with("/Setup.app/Contents/MacOS/TessarineStub"));
  const fs::path folder = program.parent_path().parent_path().parent_path().parent_path();
  EXPECT_EQ(ReadLocation(folder.string() + "/", fTree.Path("temporary/")), RunsFrom::OwnCopy);
  const std::string name = "temporary/" + folder.filename().string();
  EXPECT_EQ(fTree.Look(name + "/Setup.app"), fTree.Look("media/Setup.app"));
  EXPECT_EQ(fMachine.ClipboardText(), fTree.Path("media/"));
  EXPECT_EQ(fTree.Look(name)["SourceFolder"], "file 600 " + fTree.Path("media/"));
  EXPECT_FALSE(fTree.Has("temporary/1234")) << "left by an earlier run";
  EXPECT_TRUE(fTree.Has("temporary/12345/kept") && fTree.Has("temporary/5678/kept"));

  fs::remove_all(fTree.Path("temporary"));
  fTree.Write("temporary", "");
  run("No luck", "a file in the folder's place");
  fs::remove(fTree.Path("temporary"));
  fTree.Folder("temporary");
  ASSERT_EQ(::mkfifo(fTree.Path("media/Setup.app/fifo").c_str(), 0644), 0);
  run("No luck", "a bundle that can't be copied");
  EXPECT_EQ(fTree.Look("temporary"), Contents{});
  EXPECT_EQ(fTree.Look("Applications"), Contents{});
}

TEST_F(Split, TheCopyJoinsThePiecesWhereverItWasToldOfThem) {
  const std::pair<std::string, std::string> rows[] = {{fTree.Path("media/"), ""},
                                                      {"a text of the user's", fTree.Path("media/")},
                                                      {fTree.Path("home/"), fTree.Path("media/")}};
  Piece("Data#2", 5, 10);
  Piece("Data#3", 15, 0);
  Piece("Data#End", 15);
  fTree.Write("media/Data#5", "of another set");
  fMachine.fDisc = fTree.Path("media");
  fPackage.data[8] = "Before";
  fTree.Write("media/Setup.app/Contents/Resources/Before", "", 0755);
  BeTheCopy();
  const Contents media = fTree.Look("media");
  int seen = 0;
  fMachine.fPump = [&] {
    fToolkit.DoEvents(0);
    if (!MainWindow()->isVisible()) return;
    EXPECT_EQ(Shown(*MainWindow())["MessageLabel"], "At work");
    EXPECT_FALSE(Find<QPushButton>(*MainWindow(), kMain).isEnabled());
    ++seen;
  };
  for (const auto& [clipboard, note] : rows) {
    fMachine.SetClipboardText(clipboard);
    if (!note.empty()) fTree.Write("temporary/1234/SourceFolder", note, 0600);
    fTree.Write("Applications/Demo.zip", "stale");
    RunFromDisk(clipboard);
    EXPECT_EQ(fTree.Look("Applications"), Items("Demo/|Demo/content: " + fWhole));
    fs::remove_all(fTree.Path("Applications/Demo"));
  }
  EXPECT_GT(seen, 0) << "the user sees it at work";
  EXPECT_EQ(fTree.Look("media"), media) << "the pieces and what lies beside them stay";
  for (const std::string& item : fMachine.fLaunched)
    EXPECT_FALSE(item.ends_with("/Before")) << "the installer that was started has run it";
  fMachine.SetClipboardText("");
  if (::chown(fTree.Path("temporary/1234/SourceFolder").c_str(), 65534, 65534) == 0) {
    ExpectPrompt("Btn3");  // anybody may have written it
    RunFromDisk("another user's note");
  }
  // Once for each piece of the three runs; what the first one came from is known by the first folder named.
  EXPECT_EQ(fTree.Read("ejected").size() / 2, 3U * 4U);
}

TEST_F(Split, DiscsAreAskedForUntilTheUserHasNoMore) {
  BeTheCopy();
  fMachine.SetClipboardText(fTree.Path("media/"));
  Piece("Data#3", 15, 5);
  ExpectPrompt("Btn2");
  ExpectPrompt("Btn2", [this] {
    Piece("Data#2", 5, 10);
    fs::remove(fTree.Path("media/Data#3"));
  });
  ExpectPrompt("Btn2", [this] {
    fs::remove(fTree.Path("media/Data#2"));
    Piece("Data#End", 15);
  });
  RunFromDisk();
  EXPECT_EQ(fTree.Read("Applications/Demo/content"), fWhole);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

  fs::remove_all(fTree.Path("Applications/Demo"));
  fs::remove(fTree.Path("media/Data#End"));
  fMachine.fLaunched.clear();
  fPackage.textData[30] = "1";
  fPackage.Write(fTree, "temporary/1234/Setup.app");
  const std::string cleaner = fTree.Write("temporary/1234/Setup.app/Contents/Resources/Data3", "program");
  const Contents before = fTree.Look("temporary");
  ExpectPrompt("Btn3");
  RunFromDisk();
  EXPECT_EQ(fTree.Look("temporary"), before);
  EXPECT_TRUE(fMachine.fLaunched.empty()) << "no archive, no program, no cleanup";

  // A piece that can't be read, and one that a disk has no room for.
  fs::remove(cleaner);
  const SmallDisk disk(fTree.Path("Applications"), 64);
  for (const char* why : {"unreadable", "full"}) {
    if (*why == 'u')
      fTree.Folder("media/Data#2");
    else if (disk.Mounted() && fs::remove(fTree.Path("media/Data#2")))
      fTree.Write("media/Data#End", std::string(300'000, 'x'));
    fScript.ExpectMessage("No luck\n\nThe pieces can't be joined in " + fTree.Path("Applications") + ".");
    RunFromDisk(why);
    EXPECT_EQ(fTree.Look("Applications"), Contents{});
  }
}

TEST_F(Split, AStartFromTheTemporaryFolderEndsWithAWord) {
  fPackage.Write(fTree, "temporary/AppTranslocation/Setup.app");
  fMachine.fExecutable = fTree.Path("temporary/AppTranslocation/Setup.app/Contents/MacOS/TessarineStub");
  fScript.ExpectMessage("Drag the installer out of the Downloads folder before running it.");
  RunInVain();
}

TEST_F(Split, AMovedProgramHasItsMarkTakenOffByTheUser) {
  fTree.Write("bin/sudo",
              "#!/bin/sh\ncd " + fTree.Path() + "\nprintf '%s\\n' \"$@\" > words\ncat > input\n" +
                  "cat /proc/self/environ /proc/self/cmdline > seen\n",
              0755);
  ::setenv("PATH", (fTree.Path("bin") + ":" + std::getenv("PATH")).c_str(), 1);
  fMachine.fExecutable = "/x/AppTranslocation/y/Setup.app/Contents/MacOS/Stub";
  ViewConst::gTranslocated = PoseTranslocation;
  GlobalsKv::gIgnoreTranslocationError = false;
  for (const std::string answer : {"CancelBtn", "OKBtn"}) {
    EXPECT_FALSE(fTree.Has("words")) << "cancelled";
    Expect({.window = "Gatekeeper Translocation Issue", .press = answer, .look = [](QWidget& window) {
              Find<QLineEdit>(window, "AppPathEdit").setText("-rf \"$(touch x)\" `y`.app");
              Find<QLineEdit>(window, "AdminPasswordEdit").setText("it's \"se$cret\" \u00E9");
            }});
    ::prctl(PR_SET_DUMPABLE, 1);
    TestApplication().Run([] { EXPECT_EQ(ViewConst::GetApplicationPath(), "/x/AppTranslocation/y/"); });
    EXPECT_EQ(::prctl(PR_GET_DUMPABLE), 0) << "the password is in no core dump";
    EXPECT_EQ(fScript.TakeProblems(), "");
  }
  EXPECT_EQ(fTree.Read("words"), "-S\nxattr\n-r\n-d\ncom.apple.quarantine\n./-rf \"$(touch x)\" `y`.app\n");
  EXPECT_EQ(fTree.Read("input"), "it's \"se$cret\" \u00E9");
  EXPECT_EQ(fTree.Read("seen").find("se$cret"), std::string::npos);
}
