// SPDX-License-Identifier: MIT
// Questions that delete, and answers that come too soon for them.
#include "session/SessionTest.h"

class Questions : public SessionTest, public QObject {
 protected:
  Questions() { qApp->installEventFilter(this); }
  /// It takes a second from the request for a window to the window.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->inherits("QDialog")) fMachine.fMilliseconds += 1000;
    return false;
  }
  /// All that a user can do, in the window's first half second.
  void AnswerAtOnce(QWidget& window) {
    for (const int after : {0, 20, 300, 160}) {  // 480 in all
      fMachine.fMilliseconds += after;
      for (const QPushButton* button : window.findChildren<QPushButton*>()) {
        EXPECT_TRUE(button->isEnabled());
        const QPoint place = button->mapTo(&window, button->rect().center());
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, place);
      }
      for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
        QTest::keyClick(window.windowHandle(), Qt::Key(key));
      QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
      QCloseEvent request;
      QCoreApplication::sendEvent(window.windowHandle(), &request);
      EXPECT_TRUE(window.isVisible() && !Application::Quitting()) << after;
    }
    // Pressed too soon, let go in time.
    QWidget* button = window.focusWidget();
    ASSERT_NE(button, nullptr);
    const QPoint place = button->mapTo(&window, button->rect().center());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, place);
    QTest::keyPress(window.windowHandle(), Qt::Key_Space);
    fMachine.fMilliseconds += 40;
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, place);
    QTest::keyRelease(window.windowHandle(), Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    for (QKeyEvent* event : {&held, &up, &again}) {
      event->setTimestamp(7);  // a release and a press of one time are a repetition, too
      QApplication::sendEvent(&window, event);
    }
    EXPECT_TRUE(window.isVisible());
  }
};

TEST_F(Questions, ThatDeleteAreNotAnsweredByTheKeyForTheWindowBefore) {
  fPackage.data[2] = "1";
  fPackage.data[7] = "1";
  fTree.Write("Applications/Demo/old", "old");
  const auto early = [this](QWidget& window) { AnswerAtOnce(window); };
  const std::pair<Step, bool> rows[] = {{{.window = "YesNo", .press = "CancelBtn"}, false},
                                        {{.window = "YesNo", .close = true}, false},
                                        {{.window = "YesNo", .key = Qt::Key_Return}, true}};
  for (auto [step, replaced] : rows) {
    step.window = "ConfirmLabel1";
    step.look = early;
    ExpectInstallPressed();
    Expect(step);
    replaced ? Run() : RunInVain();
    EXPECT_EQ(fTree.Has("Applications/Demo/old"), !replaced);
  }
  fPackage.data[7] = "";
  fTree.Write("media/Setup.app/Contents/Resources/Data3", "no archive");
  for (const bool agrees : {false, true}) {
    fPackage.textData[30] = agrees ? "3" : "4";
    ExpectInstallPressed();
    Expect({.window = "MessageText", .key = agrees ? Qt::Key_Return : Qt::Key_Escape, .look = early});
    if (agrees) fScript.ExpectMessage("PostInstallCleanup Extraction Failed 2.");
    Run();
  }
}
