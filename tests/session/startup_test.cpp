// SPDX-License-Identifier: MIT
// From the start to the dressed window, and out again.
#include "session/SessionTest.h"

class Startup : public SessionTest {};

TEST_F(Startup, WithoutARecordTheUserIsToldAndTheRunEnds) {
  fPackage.textData[6] = "|||||||||||||other words";
  fPackage.Write(fTree, "media/Setup.app");
  const std::string record = fTree.Write("media/Setup.app/Contents/Resources/Data", "");
  fScript.ExpectMessage("Installation Failed");
  RunFromDisk("an empty record");
  fs::resize_file(record, std::uintmax_t{1} << 40);
  fScript.ExpectMessage("Installation Failed");
  RunFromDisk("more than the memory holds");
  fs::remove(record);
  Expect({.window = "MessageBox", .text = "Installation Failed", .close = true});
  RunFromDisk("none");
  fMachine.fExecutable = fTree.Path("nowhere/Setup.app/Contents/MacOS/Stub");
  fScript.ExpectMessage("Installation Failed");
  RunFromDisk("no bundle");
}

TEST_F(Startup, WhatStandsInThePlaceOfTheApplicationsIsTold) {
  for (const bool link : {false, true}) {
    fs::remove_all(fTree.Path("Applications"));
    if (link)
      fTree.Link("Applications", "nowhere");
    else
      fTree.Write("Applications", "a file");
    fScript.ExpectMessage("Cannot Install\n\nFILE ALREADY EXISTS.\n\nA file already exists at this path: " +
                          fTree.Path("Applications"));
    RunInVain();
  }
}

TEST_F(Startup, TheWindowShowsWhatThePackageSetsAndCloses) {
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Install");
            EXPECT_EQ(window.size(), QSize(396, 238));
            EXPECT_EQ(window.minimumSize(), window.maximumSize());
            EXPECT_EQ(Shown(window),
                      (Texts{{"InstallBtn", "Install"}, {"MessageLabel", ""}, {"QuitBtn", "Quit"}}));
            EXPECT_TRUE(Find<QLabel>(window, "MessageLabel").alignment() & Qt::AlignLeft);
          }});
  RunInVain();
  Expect({.window = kMain, .look = [](QWidget& window) {
            for (QAction* action : window.actions())
              if (action->objectName() == "FileQuit") action->trigger();
          }});
  RunInVain();
  fPackage.data[11] = "1";
  const char* const kInformation = "Weitere Informationen zum Programm";
  const std::string labels = "| |Go & do||||" + std::string(kInformation);
  fPackage.textData = {
      {2, "<b>Hi</b> & caf\u00E9"}, {5, "info"}, {6, labels}, {8, "\u00A9 Me"}, {9, "Demo 2"}};
  Expect({.window = kMain, .close = true, .look = [&](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Demo 2");
            Texts texts = Shown(window);
            texts["InfoBtn"] = Find<QPushButton>(window, "InfoBtn").accessibleName().toStdString();
            EXPECT_EQ(texts, (Texts{{"CopyrightLabel", "\u00A9 Me"},
                                    {"InfoBtn", kInformation},
                                    {"InstallBtn", "Go && do"},
                                    {"MessageLabel", "<b>Hi</b> & caf\u00E9"},
                                    {"QuitBtn", " "}}));
            EXPECT_EQ(Find<QLabel>(window, "MessageLabel").textFormat(), Qt::PlainText);
            EXPECT_TRUE(Find<QLabel>(window, "MessageLabel").alignment() & Qt::AlignHCenter);
            const auto place = [&](const char* name) { return Find<QPushButton>(window, name).geometry(); };
            EXPECT_GT(place("InfoBtn").width(), 80);
            EXPECT_LT(place("InfoBtn").right(), place("QuitBtn").left());
            EXPECT_LT(place("QuitBtn").right(), place("InstallBtn").left());
            EXPECT_LT(place("InstallBtn").right(), window.width());
          }});
  RunInVain();
  fPackage.data[4] = "FF0000FFFFFF,2,1";
  fPackage.data[6] = "00FF00FFFFFF,1,2";
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            const auto picture = [&](const char* name) {
              return Find<QLabel>(window, name).pixmap(Qt::ReturnByValue).toImage();
            };
            const QImage logo = picture("LogoCanvas");
            const QImage other = picture("PictureCanvas");
            ASSERT_EQ(logo.size(), QSize(2, 1));
            ASSERT_EQ(other.size(), QSize(1, 2));
            EXPECT_EQ(logo.pixelColor(0, 0), QColor(Qt::red));
            EXPECT_EQ(other.pixelColor(0, 0), QColor(Qt::green));
            EXPECT_EQ(logo.pixelColor(1, 0).alpha() + other.pixelColor(0, 1).alpha(), 0) << "white";
          }});
  RunInVain();
}

TEST_F(Startup, TheLinkShowsAndOpensWhatThePackageSays) {
  const char* const rows[][4] = {
      {"", "", "", ""},
      {"", "Our home", "Our home", ""},
      {"example.org", "", "example.org", "http://example.org"},
      {" HTTP://EXAMPLE.ORG\t", "See", "See", "HTTP://EXAMPLE.ORG"},
      {"ftp://example.org/http", "", "ftp://example.org/http", "ftp://example.org/http"},
  };
  for (const auto& [address, text, shown, opens] : rows) {
    fMachine.fAddresses.clear();
    fPackage.textData[3] = address;
    fPackage.textData[4] = text;
    Expect({.window = kMain, .press = "QuitBtn", .look = [&](QWidget& window) {
              EXPECT_EQ(Shown(window)["URLLabel"], shown) << address;
              QTest::mouseClick(&Find<QLabel>(window, "URLLabel"), Qt::LeftButton);
            }});
    Run(address);
    EXPECT_EQ(fMachine.fAddresses, std::vector<std::string>(*opens == '\0' ? 0 : 1, opens)) << address;
  }
}

TEST_F(Startup, AddressesReachTheDesktopAsTheyWereWritten) {
  fTree.Write("bin/xdg-open", "#!/bin/sh\nprintf '%s %s\\n' $# \"$1\" >> \"${0%/bin/*}/opened\"\n", 0755);
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (fTree.Path("bin") + ":" + path).c_str(), 1);
  const std::string address = "HTTP://Example.ORG/%7eA b?x='$(y)'&z=\u00E9#f";
  for (const std::string& refused :
       {std::string("file:///etc/passwd"), fTree.Path("bin/xdg-open"), std::string("-http://x"),
        std::string("http:"), std::string("http://x\ny")})
    fToolkit.ShowURL(refused);
  fToolkit.ShowURL(" " + address + "\n");
  for (int look = 0; look < 500 && !fTree.Has("opened"); ++look) QTest::qWait(10);
  EXPECT_EQ(fTree.Read("opened"), "1 " + address + "\n");
  ::setenv("PATH", path.c_str(), 1);
}
