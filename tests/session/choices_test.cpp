// SPDX-License-Identifier: MIT
// What the user picks, and where it lands.
#include "session/SessionTest.h"
#include "support/ScriptedServer.h"
#include "support/ZipBuilder.h"

using ziptest::File;
using ziptest::Folder;
using ziptest::Link;
using ziptest::ZipOf;

class Choices : public SessionTest, public QObject {
 protected:
  Choices() {
    qApp->installEventFilter(this);
    fPackage.data[2] = "1";
    fTree.Link("media/Setup.app/Contents/MacOS/ditto", DITTO_PROGRAM);
  }
  void Archive(const std::string& name, const std::vector<ziptest::Item>& items) const {
    fTree.Write("media/Setup.app/Contents/Resources/" + name, ZipOf(items));
  }

  /// Goes down that many choices from the first one, and on.
  void ExpectChoice(int down) {
    Expect({.window = "Pick One Choice", .key = Qt::Key_Return, .look = [down](QWidget& dialog) {
              dialog.activateWindow();  // arrow keys go from the control that has the program's focus
              EXPECT_TRUE(QTest::qWaitFor([&dialog] { return QApplication::activeWindow() == &dialog; }));
              for (int i = 0; i < down; ++i) QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
            }});
  }
  /// Counts what a request's timer does, once a second. The user tries to end the run meanwhile.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* timer = qobject_cast<const QTimer*>(watched);
    if (event->type() == QEvent::Timer && timer != nullptr && timer->interval() == fMachine.TimerPeriod(1000))
      if (++fBeats == 5)
        for (QWidget* window : QApplication::topLevelWidgets())
          if (window->isVisible()) QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
    return false;
  }
  void ExpectAllOptions() {
    Expect({.window = "Select Options", .key = Qt::Key_Return, .look = [](QWidget& dialog) {
              for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
                if (box->isVisible()) QTest::keyClick(box, Qt::Key_Space);
            }});
  }
  int fBeats = 0;
};

TEST_F(Choices, CaptionsAndTipsAreShownAsTheyStandAndClosingDeclines) {
  fPackage.textData[22] = std::string(200, 'W') + ",,,a <b>tip</b>| & %s \"x\",,,|,,,t";
  fPackage.textData[23] = "x";
  ExpectInstallPressed();
  Expect({.window = "Pick One Choice", .look = [](QWidget& dialog) {
            QList<QRadioButton*> items = dialog.findChildren<QRadioButton*>();
            for (QRadioButton* item : items) item->grab();
            EXPECT_TRUE(items[0]->toolTip().contains("\na &lt;b&gt;tip&lt;/b&gt;"));
            EXPECT_TRUE(items[1]->toolTip().isEmpty() && items[2]->toolTip().contains(">t<"));
            EXPECT_EQ(items[1]->accessibleName(), " & %s \"x\"");
            EXPECT_EQ(dialog.size(), QSize(340, 14 + 3 * 32 + 40));
            EXPECT_EQ(Shown(dialog).size(), 3U + 2U);
            EXPECT_TRUE(items[0]->isChecked() && dialog.focusWidget() == items[0]);
            QTest::keyClick(items[1], Qt::Key_Escape);
            EXPECT_TRUE(dialog.isVisible()) << "no button answers to Escape";
            QTest::keyClick(items[1], Qt::Key_Return);
          }});
  Expect({.window = "Select Options", .close = true});
  RunInVain();
  ExpectInstallPressed();
  Expect({.window = "Pick One Choice", .press = "QuitBtn"});
  RunInVain("no second one behind a first one that was declined");
}

TEST_F(Choices, WhatIsPickedLandsInTheTarget) {
  fPackage.textData[22] = "Minimal,min.zip,Tools|Full \"100%\",any/where/full.zip,Tools|Last,,";
  fPackage.textData[23] =
      "Docs & more,docs.zip,dEMO|New,new.zip,Sub/New| Again,again.zip,Sub/New|Out,new.zip,../out|"
      "Exit,new.zip,exit|Broken,broken.zip,Broken|Hostile,hostile.zip,Hostile|Rest,rest.zip,";
  fPackage.textData[26] = "https://example.com/?a=b&c=$(d)";
  fPackage.textData[28] = "It's new|Enjoy";
  Archive("full.zip", {File("tool", "full"), Folder("both/"), File("both/x", "new"), Folder("over/"),
                       File("over/y", "folder"), File("under", "file"), Link("link", "tool"),
                       File(".hidden item", "h"), Folder("frozen/", 040555)});
  Archive("docs.zip", {File("content", "docs"), File("guide", "guide")});
  Archive("new.zip", {File("n", "1"), File("m", "1")});
  Archive("again.zip", {File("n", "2")});
  Archive("hostile.zip", {File("fine"), File("../../escape")});
  Archive("rest.zip", {File("rest")});
  fTree.Write("media/Setup.app/Contents/Resources/broken.zip", std::string(20'000, 'x'));
  fTree.Write("outside/kept", "kept");
  fTree.Write("Applications/Demo_Option/mine", "the user's, whatever its name");
  fMachine.fArchive.work = [this](const FolderItem& folder) {
    Unpack(folder);
    for (const char* old : {"tool", "kept", "both/old", "over", "under/z", "link"})
      fTree.Write(In(folder, std::string("Demo/Tools/") + old), "old");
    fTree.Link(In(folder, "Demo/exit"), fTree.Path("outside"));
    const std::string left = In(folder, "Demo/.tessarine-install-0123456789abcdef");
    fTree.Write(left + "/stale", "by a run that was cut short");
    fs::permissions(fTree.Path(left), fs::perms(0700));
    fs::permissions(fTree.Path(In(folder, "Demo/Tools")), fs::perms(0555));
  };
  ExpectInstallPressed();
  ExpectChoice(1);
  ExpectAllOptions();
  for (const char* name : {"Out", "Exit", "Broken", "Hostile"})
    fScript.ExpectMessage(std::string("Install failed for option ") + name);
  Expect({.window = "Release Notes", .press = "OKBtn", .look = [this](QWidget& window) {
            EXPECT_EQ(Shown(window), (Texts{{"AgreementEdit", ""}, {"OKBtn", "OK"}}));
            EXPECT_EQ(Find<QPlainTextEdit>(window, "AgreementEdit").toPlainText(), "It's new\nEnjoy");
            EXPECT_TRUE(fMachine.fAddresses.empty()) << "the address comes last";
          }});
  Run();
  EXPECT_EQ(fTree.Look("Applications"),
            Items("Demo_Option/|Demo_Option/mine: the user's, whatever its name|Demo/|Demo/content: docs|"
                  "Demo/guide: guide|Demo/rest: content\n|Demo/exit: link to " +
                  fTree.Path("outside") +
                  "|Demo/Sub/|Demo/Sub/New/|Demo/Sub/New/n: 2|Demo/Sub/New/m: 1|Demo/Tools: folder 555|"
                  "Demo/Tools/tool: full|Demo/Tools/kept: old|Demo/Tools/both/|Demo/Tools/both/x: new|"
                  "Demo/Tools/over/|Demo/Tools/over/y: folder|Demo/Tools/under: file|"
                  "Demo/Tools/link: link to tool|Demo/Tools/.hidden item: h|Demo/Tools/frozen: folder 555"));
  EXPECT_EQ(fTree.Look("outside"), (Contents{{"kept", "file 644 kept"}}));
  EXPECT_EQ(fMachine.fAddresses, std::vector<std::string>{"https://example.com/?a=b&c=$(d)"});
}

TEST_F(Choices, WhatCannotBeMovedInIsToldAndDisksAreCrossed) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs root: mounts";
  ScriptedServer server;
  server.Answer("/big", {Page("200 OK", std::string(100'000, 'x'))});
  fPackage.textData[22] = "One,gone.zip,Tools";
  fPackage.textData[23] =
      "Disk,disk.zip,Disk|Into,into.zip,Disk|Big," + server.Address("/big") + ",Disk/mounted/New";
  fPackage.textData[28] = "<HTML>Notes</HTML>";
  fPackage.textData[6] = "||||Fine||||||||||||||||||||||Notes at last";
  Archive("disk.zip", {Folder("a/"), File("a/x", "new"), Link("a/l", "x"), File("f", "new"), Link("l", "f")});
  Archive("into.zip", {File("mounted"), File("fine")});
  std::optional<SmallDisk> disk, inner;
  const std::string at = "Applications/Demo/Disk";
  fMachine.fPump = [&] {
    if (!disk && fTree.Has("Applications/Demo/content")) {
      disk.emplace(fTree.Folder(at), 256);
      for (const char* old : {"/a/old", "/f/old", "/l"}) fTree.Write(at + old, "old");
      inner.emplace(fTree.Folder(at + "/mounted"), 64);
      fTree.Write(at + "/mounted/kept", "kept");
    }
    fToolkit.DoEvents(0);
  };
  ExpectInstallPressed();
  ExpectChoice(0);
  ExpectAllOptions();
  for (const std::string& told :
       {std::string("Install failed for selected choice"), "Failed to create " + fTree.Path(at + "/mounted"),
        std::string("Install of download failed.  Check account permissions."),
        std::string("Install failed for option Big")})
    fScript.ExpectMessage(told);
  Expect({.window = "Notes at last", .press = "ContinueBtn"});
  Run();
  if (!disk || !disk->Mounted()) GTEST_SKIP() << "needs root: mounts";
  Contents found = fTree.Look(at);
  EXPECT_TRUE(found.erase("mounted"));
  EXPECT_EQ(found,
            Items("a/|a/x: new|a/l: link to x|f: new|l: link to f|fine: content\n|mounted/kept: kept"));
}

TEST_F(Choices, WebOptionsComeWholeOrNotAtAll) {
  const std::string kFetch = "Setup file download failed.";
  const std::string kPut = "Install of download failed.  Check account permissions.";
  std::string noise(20'000, ' ');
  for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * i * i >> 9);
  const auto zip = [&noise](std::size_t size) {
    return ZipOf({File("f", noise.substr(0, size - ZipOf({File("f", "")}).size()))});
  };
  const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3a98\r\n";
  ScriptedServer server;
  const struct {
    std::string target;  // of the request
    Reply reply;
    std::string folder;                 // the item's target
    const std::string* told = nullptr;  // in front of the option's own message
    std::vector<std::string> made{};    // where it succeeds, besides the file
  } rows[] = {
      {"/a/good.zip", {Page("200 OK", zip(10'000))}, "New", nullptr, {"New"}},
      {"/good.zip?v=1&w=%2F..", {Page("200 OK", zip(15'000))}, "Deep/er", nullptr, {"Deep", "Deep/er"}},
      {"/chunked", {chunked + zip(15'000) + "\r\n0\r\n\r\n"}, "Tools", nullptr, {"Tools"}},
      {"/short.zip", {Page("200 OK", zip(9'999))}, "New", &kFetch},
      {"/hang", {.end = Reply::Hang}, "New", &kFetch},
      {"/page.zip", {Page("404 Not Found", noise)}, "New"},
      {"/none.zip", {Page("404 Not Found", "no")}, "New", &kFetch},
      {"/cutzip", {Page("200 OK", zip(15'000).substr(0, 14'900))}, "Deep/er"},
      {"/a/", {Page("200 OK", zip(15'000))}, "New", &kPut},
      {"/" + std::string(256, 'n'), {Page("200 OK", zip(15'000))}, "New", &kPut},
      {"/link", {Page("200 OK", zip(15'000))}, "New", nullptr, {"New"}},
      {"/good", {Page("200 OK", zip(15'000))}, "old"},
  };
  fMachine.fArchive.work = [this](const FolderItem& folder) {
    Unpack(folder);
    for (const char* file : {"Tools/kept", "old"})
      fTree.Write(In(folder, std::string("Demo/") + file), "kept");
    fTree.Link(In(folder, "Demo/link"), "content");
  };
  for (const auto& row : rows) {
    fMachine.fTimerSpeed = row.target == "/hang" ? 250 : 50;
    fBeats = 0;
    server.Answer(row.target, row.reply);
    fPackage.textData[23] = "Web & co," + server.Address(row.target) + "," + row.folder;
    ExpectInstallPressed();
    ExpectAllOptions();
    if (row.told != nullptr) fScript.ExpectMessage(*row.told);
    if (row.made.empty()) fScript.ExpectMessage("Install failed for option Web & co");
    Run(row.target);
    Contents expected = Items(
        "Demo/|Demo/content: archive|Demo/Tools/|Demo/Tools/kept: kept|Demo/link: link to content|Demo/old: "
        "kept");
    for (const std::string& folder : row.made) expected["Demo/" + folder] = "folder 755";
    EXPECT_TRUE(row.target != "/hang" || fBeats == 60) << fBeats << " seconds";
    Contents found = fTree.Look("Applications");
    EXPECT_EQ(found.erase("Demo/" + row.folder + "/f"), row.made.empty() ? 0U : 1U) << row.target;
    EXPECT_EQ(found, expected) << row.target;
    fs::remove_all(fTree.Path("Applications/Demo"));
  }
}
