// SPDX-License-Identifier: MIT
// From the start to the dressed window, and out again.
#include "package/Requirements.h"
#include "session/SessionTest.h"

TEST(Requirements, AreMetAtTheirThreshold) {
  const std::tuple<std::string, int, int, bool> rows[] = {
      {"macos10.12", 10, 12, true}, {"MacOS10.12", 10, 11, false}, {"MacOS10.12", 12, 0, true},
      {"MacOS10.12", 0, 0, true},   {"MacOS11.1", 0, 0, false},    {"MacOS11.1", 11, 0, false},
      {"MacOS11.1", 12, 0, true},   {"MacOS12.0", 1, 0, true}};
  for (const auto& [keyword, major, minor, met] : rows)
    EXPECT_EQ(VersionComplaint(keyword, major, minor),
              met ? "" : "Mac OS X " + keyword.substr(5) + " or later is required.")
        << keyword << major;
  EXPECT_EQ(MemoryComplaint("1gb", 1000), "");
  EXPECT_EQ(MemoryComplaint("1GB", 999), "1 GB RAM is required.");
  EXPECT_EQ(MemoryComplaint("3GB", 1), "");
}

class Startup : public SessionTest {};

TEST_F(Startup, WithoutARecordTheUserIsToldAndTheRunEnds) {
  fPackage.textData[6] = "|||||||||||||other words";
  fPackage.Write(fTree, "media/Setup.app");
  const std::string record = fTree.Write("media/Setup.app/Contents/Resources/Data", "");
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"an empty record", [] {}},
      {"more than the memory holds", [&] { fs::resize_file(record, std::uintmax_t{1} << 40); }},
      {"none", [&] { fs::remove(record); }}};
  for (const auto& [why, prepare] : rows) {
    prepare();
    fScript.ExpectMessage("Installation Failed");
    RunFromDisk(why);
  }
  fs::remove_all(fTree.Path("Applications"));
  fTree.Write("Applications", "a file");
  fScript.ExpectMessage("Cannot Install\n\nFILE ALREADY EXISTS.\n\nA file already exists at this path: " +
                        fTree.Path("Applications"));
  RunInVain();
}

/// A picture as the record holds it, of pixels by their letters: red, green, blue, black, white.
static std::string PictureField(int width, int height, const std::function<char(int x, int y)>& pixel) {
  const std::map<char, std::string> colours = {
      {'r', "FF0000"}, {'g', "00FF00"}, {'b', "0000FF"}, {'k', "000000"}, {'w', "FFFFFF"}};
  std::string digits;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) digits += colours.at(pixel(x, y));
  return digits + "," + std::to_string(width) + "," + std::to_string(height);
}

/// A stretch of what the user sees, in the same letters.
static std::string Pixels(const QImage& seen, int x, int y, int count) {
  const std::map<QRgb, char> letters = {
      {0xFFFF0000, 'r'}, {0xFF00FF00, 'g'}, {0xFF0000FF, 'b'}, {0xFF000000, 'k'}, {0xFFFFFFFF, 'w'}};
  std::string pixels;
  for (int i = 0; i < count; ++i) {
    const auto letter = letters.find(seen.pixel(x + i, y));
    pixels += letter == letters.end() ? '?' : letter->second;
  }
  return pixels;
}

TEST_F(Startup, AWindowWithoutDressIsWhitePaperAndCloses) {
  Expect({.window = kMain, .look = [](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Install");
            EXPECT_EQ(Shown(window),
                      (Texts{{"InstallBtn", "Install"}, {"MessageLabel", ""}, {"QuitBtn", "Quit"}}));
            EXPECT_EQ(Pixels(window.grab().toImage(), 0, 100, 396), std::string(396, 'w'));
            for (QAction* action : window.actions())
              if (action->objectName() == "FileQuit") action->trigger();
          }});
  fTree.Write("Applications/X.txt", "somebody's own");
  RunInVain();
  Expect({.window = kMain, .close = true});
  RunInVain();
}

TEST_F(Startup, TheWindowIsDressedAsThePackageSays) {
  fPackage.data[4] = PictureField(66, 1, [](int x, int) { return x == 0 ? 'b' : x == 1 ? 'w' : 'r'; });
  fPackage.data[6] = PictureField(4, 2, [](int x, int y) { return (y == 0 ? "rgbw" : "wkrr")[x]; });
  fPackage.data[9] = PictureField(396, 200, [](int x, int y) { return y != 0 || x > 2 ? 'g' : "rbw"[x]; });
  fPackage.data[11] = "1";
  const std::string information = "Weitere Informationen zum Programm";
  fPackage.textData = {{2, "<b>Hi</b> & caf\xC3\xA9 Gr\x9F\xA7"}, {3, "example.org"}, {5, "info"},
                       {6, "| |Go & do||||" + information},       {8, "\u00A9 Me"},   {9, "<i>Demo</i> & 2"}};
  Expect({.window = kMain, .press = "QuitBtn", .look = [&](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "<i>Demo</i> & 2");
            Texts texts = Shown(window);
            texts["InfoBtn"] = Find<QPushButton>(window, "InfoBtn").accessibleName().toStdString();
            const Texts dress = {{"CopyrightLabel", "\u00A9 Me"},
                                 {"InfoBtn", information},
                                 {"LogoCanvas", ""},
                                 {"InstallBtn", "Go && do"},
                                 {"MessageLabel", "<b>Hi</b> & caf\u00E9 Gr\u00FC\u00DF"},
                                 {"PictureCanvas", ""},
                                 {"QuitBtn", " "},
                                 {"URLLabel", "example.org"}};
            EXPECT_EQ(texts, dress);
            const QImage seen = window.grab().toImage();
            EXPECT_EQ(Pixels(seen, 0, 0, 5), "rbwgg") << "the background";
            EXPECT_EQ(Pixels(seen, 0, 199, 5) + Pixels(seen, 0, 200, 5), "gggggwwwww");
            EXPECT_EQ(Pixels(seen, 19, 12, 6), "grgbgg") << "the picture, its white transparent";
            EXPECT_EQ(Pixels(seen, 19, 13, 6) + Pixels(seen, 19, 14, 6), "ggkrrggggggg");
            EXPECT_EQ(Pixels(seen, 311, 12, 5), "gbgrr") << "the logo";
            EXPECT_EQ(Pixels(seen, 374, 12, 3) + Pixels(seen, 312, 13, 3), "rrgggg") << "cut at its place";
            std::string line;
            for (int y = 104; y < 124; ++y) line += Pixels(seen, 150, y, 96);
            EXPECT_GT(std::count(line.begin(), line.end(), 'b'), 40) << "the link, underlined in the middle";
            EXPECT_TRUE(Find<QLabel>(window, "MessageLabel").alignment() & Qt::AlignHCenter);
            EXPECT_GT(Find<QPushButton>(window, "InfoBtn").width(), 80);
          }});
  RunInVain();
  fPackage.data[6] = "FF[9,64,64";
  Expect({.window = "MessageText", .press = "Btn3", .look = [](QWidget& window) {
            EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(),
                      "INSUFFICIENT RAM.\n\nUnable to process picture due to RAM shortage.");
          }});
  Expect({.window = kMain, .press = "QuitBtn", .look = [](QWidget& window) {
            EXPECT_FALSE(Find<QWidget>(window, "PictureCanvas").isVisible());
            EXPECT_EQ(Pixels(window.grab().toImage(), 311, 12, 3), "gbg") << "the run goes on";
          }});
  RunInVain();
}

TEST_F(Startup, TheLinkShowsAndOpensWhatThePackageSays) {
  const char* const rows[][4] = {
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
              QWidget& link = Find<QLabel>(window, "URLLabel");
              QTest::mouseClick(&link, Qt::LeftButton);
              for (const Qt::Key key : {Qt::Key_Return, Qt::Key_A}) QTest::keyClick(&link, key);
            }});
    Run(address);
    EXPECT_EQ(fMachine.fAddresses, std::vector<std::string>(*opens == '\0' ? 0 : 2, opens)) << address;
  }
}

TEST_F(Startup, OnlyWebAddressesReachTheDesktopAsTheyWereWritten) {
  fTree.Write("bin/xdg-open", "#!/bin/sh\nprintf '%s %s\\n' $# \"$1\" >> \"${0%/bin/*}/opened\"\n", 0755);
  ::setenv("PATH", (fTree.Path("bin") + ":" + std::getenv("PATH")).c_str(), 1);
  const std::string address = "HTTP://Example.ORG/%7eA b?x='$(y)'&z=\u00E9#f";
  for (const char* refused : {"file:///etc/passwd", "/bin/true", "-http://x", "http:", "http://x\ny"})
    fToolkit.ShowURL(refused);
  fToolkit.ShowURL(" " + address + "\n");
  for (int look = 0; look < 500 && !fTree.Has("opened"); ++look) QTest::qWait(10);
  EXPECT_EQ(fTree.Read("opened"), "1 " + address + "\n");
}
