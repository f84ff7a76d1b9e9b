// SPDX-License-Identifier: MIT
// Notes, agreement and information: which window shows them, how, and what each answer leads to.
#include <sys/stat.h>

#include "session/SessionTest.h"

constexpr const char* kPlain = "AgreementEdit";
constexpr const char* kPage = "MyHTMLViewer";
constexpr const char* kTree = "SelectFolderDialog";

class Notes : public SessionTest {};

TEST_F(Notes, FormOfEachText) {
  const std::string limit = QString(499, QChar(0xE9)).toStdString();
  const struct {
    int field;  // 27: notes, 1: agreement, 5: information
    std::string text;
    const char *window, *title, *goOn, *quit;
    int height;
  } rows[] = {
      {27, limit, kPlain, "Pre-Installation Notes", "OK", "Quit", 210},
      {27, limit + "x", kPlain, "Pre-Installation Notes", "OK", "Quit", 410},
      {27, "$HTML$3C00480054004D004C003E00", kPage, "Pre-Installation Notes", "I Agree", "Quit", 530},
      {1, "short", kPlain, "License Agreement", "I Agree", "Quit", 410},
      {1, "text <HTML>", kPage, "License Agreement", "I Agree", "Quit", 530},
      {5, "one|<b>two</b> & caf\u00E9", kPlain, "Information", "OK", "", 410},
      {5, "<Html>", kPage, "Information", "OK", "", 530},
  };
  for (const auto& row : rows) {
    fPackage.textData = {{7, "Demo"}, {row.field, row.text}};
    const std::string goOn = row.window == kPage ? "ContinueBtn" : "OKBtn";
    Expect({.window = kMain, .press = row.field == 5 ? "InfoBtn" : "InstallBtn"});
    Expect({.window = row.window, .press = goOn, .look = [&](QWidget& window) {
              EXPECT_EQ(window.windowTitle(), row.title);
              EXPECT_EQ(window.height(), row.height) << row.text;
              EXPECT_EQ(Shown(window)[goOn] + "|" + Shown(window)["QuitBtn"],
                        std::string(row.goOn) + "|" + row.quit)
                  << row.text;
              for (const QPushButton* button : window.findChildren<QPushButton*>())
                EXPECT_TRUE(window.rect().contains(button->geometry())) << row.text;
              const auto* text = window.findChild<QPlainTextEdit*>();
              if (text == nullptr || row.field != 5) return;
              EXPECT_EQ(text->toPlainText(), "one\n<b>two</b> & caf\u00E9");
              EXPECT_TRUE(text->isReadOnly());
            }});
    Expect(row.field == 5 ? Step{.window = kMain, .press = "QuitBtn"}
                          : Step{.window = kTree, .key = Qt::Key_Escape});
    RunInVain(row.title);
  }
}

TEST_F(Notes, ADeclinedTextEndsTheRunWithNothingWritten) {
  const char* const kAgreement = "License Agreement";
  const std::pair<const char*, Step> rows[] = {
      {"plain", {.window = kPlain, .press = "QuitBtn"}},        {"plain", {.window = kPlain, .close = true}},
      {"<html>", {.window = kPage, .press = "QuitBtn"}},        {"<html>", {.window = kPage, .close = true}},
      {"plain", {.window = kAgreement, .key = Qt::Key_Escape}},
  };
  fPackage.textData[1] = "<html>";
  for (const auto& [notes, last] : rows) {
    fPackage.textData[27] = notes;
    ExpectInstallPressed();
    if (last.window == kAgreement) Expect({.window = kPlain, .press = "OKBtn"});
    Expect(last);
    RunInVain(notes);
  }
}

TEST_F(Notes, APageReachesNothingButTheBrowser) {
  const std::string secret = fTree.Write("secret.html", "secret");
  // To open this picture would be to wait for ever.
  ASSERT_EQ(::mkfifo(fTree.Path("fifo.png").c_str(), 0600), 0);
  fPackage.textData[5] =
      "<HTML><a name=x>Words</a> <a href=\" HTTP://A.Ü/%7e?b=%20c&amp;d\t\">"
      "1</a> <a href='mailto:a@b'>2</a> <a href='javascript:x'>3</a> <a href='#x'>4</a> "
      "<a href='relative'>5</a> <a href='" +
      secret + "'>6</a> <a href='file://" + secret + "'>7</a> <img src='" + fTree.Path("fifo.png") +
      "'></HTML>";
  Expect({.window = kMain, .press = "InfoBtn"});
  Expect({.window = kPage, .press = "ContinueBtn", .look = [&secret](QWidget& window) {
            auto& page = Find<QTextBrowser>(window, kPage);
            page.setFocus();
            for (int i = 0; i < 7; ++i)
              for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return}) QTest::keyClick(&page, key);
            const QTextCursor first = page.document()->find("1");
            QTest::mouseClick(page.viewport(), Qt::LeftButton, {},
                              page.cursorRect(first).center() - QPoint(3, 0));
            const QUrl file = QUrl::fromLocalFile(QString::fromStdString(secret));
            EXPECT_TRUE(page.toPlainText().startsWith("Words"));
            EXPECT_EQ(page.loadResource(QTextDocument::HtmlResource, file).toByteArray(), "");
          }});
  Expect({.window = kMain, .press = "QuitBtn"});
  RunInVain();
  const std::string written = "HTTP://A.Ü/%7e?b=%20c&d";
  EXPECT_EQ(fMachine.fAddresses, (std::vector<std::string>{written, "mailto:a@b", written}));
}
