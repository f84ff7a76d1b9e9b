// SPDX-License-Identifier: MIT
// Notes, agreement and information: which window shows them, how, and what each answer leads to.
#include <sys/stat.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

#include "session/SessionTest.h"

namespace {

constexpr const char* kPlain = "AgreementEdit";
constexpr const char* kPage = "MyHTMLViewer";
constexpr const char* kTree = "SelectFolderDialog";

std::string Characters(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "\u00E9";
  return text;
}

/// A note as a package stores it whose text needs more than its record's encoding.
std::string Marked(const std::string& ascii) {
  std::string field = "$HTML$";
  for (const char letter : ascii) {
    const char* digits = "0123456789ABCDEF";
    field += {digits[letter >> 4], digits[letter & 15], '0', '0'};
  }
  return field;
}

}  // namespace

class Notes : public SessionTest {};

TEST_F(Notes, FormOfEachText) {
  struct Row {
    int field;  // 27: notes, 1: agreement, 5: information
    std::string text;
    const char* labels;
    const char *window, *title, *goOn, *quit;
    int height;
  };
  const char* const kOverrides = "|Leave|||Yes|Agreed||Contract|About|||||||||||||||||Before";
  const Row rows[] = {
      {27, Characters(499), "", kPlain, "Pre-Installation Notes", "OK", "Quit", 210},
      {27, Characters(500), "", kPlain, "Pre-Installation Notes", "OK", "Quit", 410},
      {27, "<html>x</html>", "", kPage, "Pre-Installation Notes", "I Agree", "Quit", 530},
      {27, Marked("<HTML>x</HTML>"), kOverrides, kPage, "Before", "Yes", "Leave", 530},
      {27, "HTML", kOverrides, kPlain, "Before", "Yes", "Leave", 210},
      {1, "short", "", kPlain, "License Agreement", "I Agree", "Quit", 410},
      {1, "text <HTML>", kOverrides, kPage, "Contract", "Agreed", "Leave", 530},
      {5, "short", "", kPlain, "Information", "OK", "", 410},
      {5, "<Html>", kOverrides, kPage, "About", "Yes", "", 530},
  };
  for (const auto& row : rows) {
    fPackage.textData = {{7, "Demo"}, {6, row.labels}, {row.field, row.text}};
    const bool page = row.window == kPage;
    Expect({.window = kMain, .press = row.field == 5 ? "InfoBtn" : "InstallBtn"});
    Expect({.window = row.window, .press = page ? "ContinueBtn" : "OKBtn", .look = [&](QWidget& window) {
              EXPECT_EQ(window.windowTitle(), row.title);
              EXPECT_EQ(window.height(), row.height) << row.text;
              EXPECT_EQ(Shown(window)[page ? "ContinueBtn" : "OKBtn"], row.goOn) << row.text;
              EXPECT_EQ(Shown(window)["QuitBtn"], row.quit) << row.text;
              for (const QPushButton* button : window.findChildren<QPushButton*>())
                EXPECT_TRUE(window.rect().contains(button->geometry())) << row.text;
            }});
    if (row.field == 5)
      Expect({.window = kMain, .press = "QuitBtn"});
    else
      Expect({.window = kTree, .key = Qt::Key_Escape});
    RunInVain(row.title);
  }
}

TEST_F(Notes, ADeclinedTextEndsTheRunWithNothingWritten) {
  const struct {
    std::string notes, agreement;
    Step last;
    const char* before;  // answers the notes in front of it
  } rows[] = {
      {"plain", "never shown", {.window = kPlain, .press = "QuitBtn"}, ""},
      {"plain", "never shown", {.window = kPlain, .close = true}, ""},
      {"<html>", "never shown", {.window = kPage, .press = "QuitBtn"}, ""},
      {"<html>", "never shown", {.window = kPage, .key = Qt::Key_Escape}, ""},
      {"<html>", "never shown", {.window = kPage, .close = true}, ""},
      {"", "plain", {.window = "License Agreement", .press = "QuitBtn"}, ""},
      {"plain", "<html>", {.window = "License Agreement", .key = Qt::Key_Escape}, "OKBtn"},
      {"<html>", "plain", {.window = "License Agreement", .close = true}, "ContinueBtn"},
  };
  for (const auto& row : rows) {
    fPackage.textData[27] = row.notes;
    fPackage.textData[1] = row.agreement;
    ExpectInstallPressed();
    if (*row.before != '\0') Expect({.window = "Pre-Installation Notes", .press = row.before});
    Expect(row.last);
    RunInVain(row.notes + " / " + row.agreement);
  }
}

TEST_F(Notes, KeysPressTheButtonsTheyBelongTo) {
  fPackage.textData[27] = "<html>page</html>";
  fPackage.textData[1] = "plain";
  Expect({.window = kMain, .key = Qt::Key_Return});
  Expect({.window = kPage, .key = Qt::Key_Return});
  Expect({.window = "License Agreement", .key = Qt::Key_Enter, .look = [](QWidget& window) {
            QTest::keyClick(&window, Qt::Key_Escape);
            EXPECT_TRUE(window.isVisible()) << "no button of this window answers to Escape";
          }});
  Expect({.window = kTree, .key = Qt::Key_Escape});
  RunInVain();
}

TEST_F(Notes, InformationIsShownAgainAndAgain) {
  fPackage.textData[5] = "one|<b>two</b> & caf\u00E9";
  for (int i = 0; i < 3; ++i) {
    Expect({.window = kMain, .press = "InfoBtn"});
    Expect({.window = kPlain,
            .key = i == 1 ? 0 : int{Qt::Key_Return},
            .close = i == 1,
            .look = [](QWidget& window) {
              const auto& text = Find<QPlainTextEdit>(window, kPlain);
              EXPECT_EQ(text.toPlainText(), "one\n<b>two</b> & caf\u00E9");
              EXPECT_TRUE(text.isReadOnly());
            }});
  }
  Expect({.window = kMain, .press = "QuitBtn"});
  RunInVain();
}

TEST_F(Notes, APageReachesNothingButTheBrowser) {
  const std::string secret = fTree.Write("secret.html", "secret");
  // To open this picture would be to wait for ever.
  ASSERT_EQ(::mkfifo(fTree.Path("fifo.png").c_str(), 0600), 0);
  fPackage.textData[5] = "<HTML><a name=x>Words</a> <img src='" + fTree.Path("fifo.png") + "'></HTML>";
  Expect({.window = kMain, .press = "InfoBtn"});
  Expect({.window = kPage, .press = "ContinueBtn", .look = [&secret](QWidget& window) {
            auto& page = Find<QTextBrowser>(window, kPage);
            for (const char* link : {"http://a/?b=%20c", "mailto:a@b", "javascript:x", "#x", "relative"})
              emit page.anchorClicked(QUrl(link));
            const QUrl file = QUrl::fromLocalFile(QString::fromStdString(secret));
            emit page.anchorClicked(file);
            EXPECT_TRUE(page.toPlainText().startsWith("Words"));
            EXPECT_EQ(page.loadResource(QTextDocument::HtmlResource, file).toByteArray(), "");
          }});
  Expect({.window = kMain, .press = "QuitBtn"});
  RunInVain();
  EXPECT_EQ(fMachine.fAddresses, (std::vector<std::string>{"http://a/?b=%20c", "mailto:a@b"}));
}

TEST_F(Notes, AHeldKeyIsNoAnswerAndAByteOrderMarkNoAgreement) {
  fPackage.textData[1] = "\xEF\xBB\xBF";
  fPackage.textData[27] = "notes";
  ExpectInstallPressed();
  Expect({.window = kPlain, .press = "OKBtn", .look = [](QWidget& window) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
            QApplication::sendEvent(&window, &held);
            EXPECT_TRUE(window.isVisible());
          }});
  ExpectChosen("home");
  Run();
  EXPECT_EQ(fTree.Read("home/Demo/content"), fPackage.payload);
}

TEST_F(Notes, AResizedAgreementStretchesItsTextAndKeepsItsButtons) {
  fPackage.textData[1] = "plain";
  ExpectInstallPressed();
  Expect({.window = kPlain, .press = "QuitBtn", .look = [](QWidget& window) {
            const QRect text = Find<QWidget>(window, kPlain).geometry();
            const QRect button = Find<QPushButton>(window, "OKBtn").geometry();
            EXPECT_EQ(window.minimumSize(), QSize(690, 410));
            window.resize(790, 460);
            EXPECT_EQ(Find<QWidget>(window, kPlain).geometry(), text.adjusted(0, 0, 100, 50));
            EXPECT_EQ(Find<QPushButton>(window, "OKBtn").geometry(), button.translated(100, 50));
          }});
  RunInVain();
}
