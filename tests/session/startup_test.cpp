// SPDX-License-Identifier: MIT
// From the start to the dressed window, and out again.
#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "session/SessionTest.h"

class Startup : public SessionTest {};

TEST_F(Startup, WithoutARecordTheUserIsToldAndTheRunEnds) {
  fPackage.textData[6] = "|||||||||||||other words";
  fPackage.Write(fTree, "media/Setup.app");
  std::filesystem::remove(fTree.Path("media/Setup.app/Contents/Resources/Data"));
  fScript.ExpectMessage("Installation Failed");
  RunFromDisk("texts alone");
  fTree.Write("media/Setup.app/Contents/Resources/Data", "");
  fScript.ExpectMessage("Installation Failed");
  RunFromDisk("an empty record");
  fMachine.fExecutable = fTree.Path("nowhere/Setup.app/Contents/MacOS/Stub");
  Expect({.window = "MessageBox", .text = "Installation Failed", .close = true});
  RunFromDisk("no package");
}

TEST_F(Startup, TheWindowShowsWhatThePackageSets) {
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Install");
            EXPECT_EQ(window.size(), QSize(396, 238));
            EXPECT_EQ(window.minimumSize(), window.maximumSize());
            EXPECT_EQ(Shown(window),
                      (Texts{{"InstallBtn", "Install"}, {"MessageLabel", ""}, {"QuitBtn", "Quit"}}));
            EXPECT_TRUE(Find<QLabel>(window, "MessageLabel").alignment() & Qt::AlignLeft);
          }});
  RunInVain("nothing");
  fPackage.data[11] = "1";
  fPackage.textData = {
      {2, "<b>Hi</b> & caf\u00E9"}, {5, "info"}, {6, "| |Go & do||||Read|"}, {8, "\u00A9 Me"}, {9, "Demo 2"}};
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Demo 2");
            EXPECT_EQ(Shown(window), (Texts{{"CopyrightLabel", "\u00A9 Me"},
                                            {"InfoBtn", "Read"},
                                            {"InstallBtn", "Go && do"},
                                            {"MessageLabel", "<b>Hi</b> & caf\u00E9"},
                                            {"QuitBtn", " "}}));
            EXPECT_EQ(Find<QLabel>(window, "MessageLabel").textFormat(), Qt::PlainText);
            EXPECT_TRUE(Find<QLabel>(window, "MessageLabel").alignment() & Qt::AlignHCenter);
          }});
  RunInVain("everything");
}

TEST_F(Startup, TheLinkShowsAndOpensWhatThePackageSays) {
  const struct {
    const char *address, *text, *shown, *opened;
  } rows[] = {
      {"", "", "", ""},
      {"", "Our home", "Our home", ""},
      {"example.org", "", "example.org", "http://example.org"},
      {"HTTP://EXAMPLE.ORG", "See", "See", "HTTP://EXAMPLE.ORG"},
      {"ftp://example.org/http", "", "ftp://example.org/http", "ftp://example.org/http"},
  };
  for (const auto& row : rows) {
    fMachine.fAddresses.clear();
    fPackage.textData[3] = row.address;
    fPackage.textData[4] = row.text;
    Expect({.window = kMain, .press = "QuitBtn", .look = [&row](QWidget& window) {
              EXPECT_EQ(Shown(window)["URLLabel"], row.shown) << row.address;
              QTest::mouseClick(&Find<QLabel>(window, "URLLabel"), Qt::LeftButton);
            }});
    Run(row.address);
    const std::vector<std::string> opened(*row.opened == '\0' ? 0 : 1, row.opened);
    EXPECT_EQ(fMachine.fAddresses, opened) << row.address;
  }
}

TEST_F(Startup, LongCaptionsKeepTheButtonsApart) {
  fPackage.textData[5] = "info";
  fPackage.textData[6] =
      "|Installation abbrechen|Installation jetzt beginnen||||Weitere Informationen zum Programm";
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            const QRect info = Find<QPushButton>(window, "InfoBtn").geometry();
            const QRect quit = Find<QPushButton>(window, "QuitBtn").geometry();
            const QRect install = Find<QPushButton>(window, "InstallBtn").geometry();
            EXPECT_LT(info.right(), quit.left());
            EXPECT_LT(quit.right(), install.left());
            EXPECT_TRUE(window.rect().contains(info.united(install)));
            EXPECT_EQ(Find<QPushButton>(window, "InfoBtn").accessibleName(),
                      "Weitere Informationen zum Programm");
          }});
  RunInVain();
}

TEST_F(Startup, EveryWayOutOfTheWaitingWindowEndsTheRun) {
  Expect({.window = kMain, .close = true});
  RunInVain("close request");
  Expect({.window = kMain, .look = [](QWidget& window) {
            for (QAction* action : window.actions())
              if (action->objectName() == "FileQuit") action->trigger();
          }});
  RunInVain("menu");
}
