// SPDX-License-Identifier: MIT
// Messages, notes, titles and captions: all of them is shown, as it stands, whatever it holds.
#include "dialogs/LicenseAgreementWindow.h"
#include "platform/Dialogs.h"
#include "session/SessionTest.h"

class ShownTexts : public SessionTest {
 protected:
  /// In a run of its own.
  void InRun(const std::function<void()>& work) {
    TestApplication().Run([&] {
      work();
      Application::Quit(0);
    });
    EXPECT_EQ(fScript.TakeProblems(), "");
  }
  static QString Of(const char* part, int length) {
    const QString piece = QString::fromUtf8(part);
    return piece.repeated(length / piece.size() + 1).left(length);
  }
  static constexpr const char* kLatin = "A sentence of some words & <b>markup</b>, which goes on. ";
  static constexpr const char* kHebrew = "\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD, ";
  static constexpr const char* kChinese = "\u6F22\u5B57\u6587\u4EF6\u5B89\u88DD";

  static bool EndIsSeen(QPlainTextEdit& area) {
    area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
    QTextCursor end(area.document());
    end.movePosition(QTextCursor::End);
    const QRect last = area.cursorRect(end);
    return last.top() >= 0 && last.bottom() <= area.viewport()->height();
  }
  static QString Copied(QPlainTextEdit& area) {
    QGuiApplication::clipboard()->clear();
    area.setFocus();
    QTest::keyClick(&area, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&area, Qt::Key_C, Qt::ControlModifier);
    return QGuiApplication::clipboard()->text();
  }
};

TEST_F(ShownTexts, EveryMessageIsWholeOrScrollsToItsEnd) {
  Window front({300, 200}, "[*] Front");
  front.Show();
  std::vector<QString> texts = {Of("line\n", 300), QString(600, '\n'), "one\n\ntwo\n"};
  for (const char* part :
       {kLatin, kHebrew, kChinese, "\u03B1\u03B2\u03B3\u03B4\u03B5 ", "W", "/long/path\u00A0to"})
    for (const int length : {1, 20, 100, 300, 600}) texts.push_back(Of(part, length));
  int ending = 0, scrolled = 0;
  for (const QString& text : texts) {
    const Step ends[] = {{.window = "", .press = "OKBtn"},
                         {.window = "", .key = Qt::Key_Return},
                         {.window = "", .key = Qt::Key_Escape},
                         {.window = "", .close = true}};
    Step step = ends[ending++ % 4];
    step.window = "MessageBox";
    step.text = text.toStdString();
    step.look = [&](QWidget& box) {
      EXPECT_EQ(box.windowHandle()->title(), "[*] Front");
      auto& area = Find<QPlainTextEdit>(box, "MessageBoxText");
      EXPECT_TRUE(box.accessibleDescription() == text && area.accessibleName() == text);
      EXPECT_EQ(area.horizontalScrollBar()->maximum(), 0);
      EXPECT_TRUE(box.rect().contains(Find<QPushButton>(box, "OKBtn").geometry()));
      EXPECT_EQ(box.size().boundedTo(box.screen()->availableSize()), box.size());
      if (area.verticalScrollBar()->maximum() > 0) {
        ++scrolled;
        EXPECT_GT(area.height(), box.screen()->availableSize().height() - 200) << "there was room";
      }
      EXPECT_TRUE(EndIsSeen(area)) << text.toStdString();
      EXPECT_EQ(Copied(area), text);
    };
    Expect(step);
    InRun([&] { MessageBox(step.text); });
  }
  EXPECT_TRUE(scrolled > 0 && scrolled < 8) << scrolled;
}

TEST_F(ShownTexts, OfAMegabyteAreSeenAtOnceAndCopiedAsTheyAre) {
  constexpr int kSize = 1'000'000;
  for (const QString& text : {Of("x", kSize), Of(kHebrew, kSize), Of("a\n\u05D0\n", kSize),
                              Of("\U0001F600e\u0301", kSize) + "\u0301",
                              Of("word\u00A0 ", 6000) + "\n" + Of("y", 5001) + "\n\nend"}) {
    LicenseAgreementWindow window;
    window.AgreementEdit.SetText(text.toStdString());
    Expect({.window = "AgreementEdit", .press = "OKBtn", .look = [&](QWidget& dialog) {
              auto& area = Find<QPlainTextEdit>(dialog, "AgreementEdit");
              // What a line is looked for in, and what is kept for each line: both cost time.
              for (QTextBlock block = area.document()->begin(); block.isValid(); block = block.next()) {
                const QString part = block.text();
                ASSERT_FALSE(!part.isEmpty() && (part[0].isLowSurrogate() || part[0].isMark()));
                ASSERT_LE(part.size(), 10'000);
              }
              EXPECT_LE(area.blockCount(), 110'000);
              EXPECT_TRUE(Copied(area) == text) << text.left(20).toStdString();
              EXPECT_TRUE(EndIsSeen(area));
            }});
    InRun([&] { window.ShowModal(); });
  }
}

TEST_F(ShownTexts, OfTitlesAndButtonsAreShownAsTheyStand) {
  for (const char* title : {"[*][*] A & B [*]", "&File", "a \u2014 TessarineStub"}) {
    Window window({300, 200}, title);
    const PushButton button(window, "Push", {20, 20, 200, 20}, "A & B\r\n&& \"C\nD");
    const CheckBox box(window, "Check", {20, 60, 200, 20}, "A & B\n[*]");
    window.Show();
    for (const QWidget* top : QApplication::topLevelWidgets()) {
      if (top->findChild<QWidget*>("Push") == nullptr) continue;
      EXPECT_EQ(top->windowHandle()->title(), title);
      QCoreApplication::sendPostedEvents();
      EXPECT_EQ(Find<QPushButton>(*top, "Push").text(), "A && B &&&& \"C D");
      EXPECT_EQ(Find<QPushButton>(*top, "Push").accessibleName(), "A & B && \"C D");
      EXPECT_EQ(Find<QCheckBox>(*top, "Check").accessibleName(), "A & B [*]");
    }
  }
}
