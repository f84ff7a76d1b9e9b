// SPDX-License-Identifier: MIT
// The wait: how long it lasts, what ends it, and what happens in it to windows and to the user's input.
#include "http/HttpTest.h"
#include "platform/Controls.h"
#include "platform/qt/NativeWindow.h"

class Wait : public HttpTest {
 protected:
  Wait() { fServer.Answer("/hang", {.end = Reply::Hang}); }
};

TEST_F(Wait, LastsWholeSecondsUntilTheEndOrTheLimit) {
  const struct {
    bool done;
    std::int64_t limit, seconds;
  } rows[] = {{true, 60, 1}, {false, 0, 1}, {false, 1, 1}, {false, -5, 1}, {false, 4, 4}};
  for (const auto& [done, limit, seconds] : rows) {
    THttpProgress progress;
    progress.fKvHttp = std::make_shared<TKvHttp>();
    progress.fKvHttp->fDone = done;
    progress.fTimeout = limit;
    progress.ShowModal();
    QTest::qWait(fMachine.TimerPeriod(3000));
    EXPECT_EQ(progress.fSecond, seconds) << "of " << limit;
  }
}

TEST_F(Wait, ALateAnswerIsNobodysAndEndsWithTheCall) {
  const std::string begun = "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\nx";
  fServer.Answer("/slow", {.bytes = begun, .endless = true});
  for (const char* target : {"/slow", "/hang"}) {
    EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address(target), 3), "") << target;
    EXPECT_EQ(fServer.TakeRequests().size(), 1U) << target;
    EXPECT_TRUE(fServer.AwaitNoConnection()) << target;
    QTest::qWait(5);  // what was under way arrives
  }
  // Not even sent, sent but not begun, or in the middle: the object goes with all of it.
  for (const int milliseconds : {0, 1, 5}) {
    auto http = std::make_unique<TKvHttp>();
    http->Send("GET", fServer.Address("/slow"));
    if (milliseconds > 0) QTest::qWait(milliseconds);
    http.reset();
    EXPECT_TRUE(fServer.AwaitNoConnection());
  }
}

/// A window with a button, which counts what happens to it.
struct Desk : Window {
  Desk() : Window({200, 100}, "Desk") {
    Button.OnAction([this] { ++fTaken; });
  }
  bool Event_CancelClose(bool /*appQuitting*/) override { return ++fTaken > 0; }
  /// What the user does in any wait.
  void Disturb() {
    QTest::mouseClick(Native().findChild<QWidget*>("Button"), Qt::LeftButton);
    QTest::keyClick(&Native(), Qt::Key_Return);
    QCloseEvent request;
    QCoreApplication::sendEvent(Native().windowHandle(), &request);
  }
  PushButton Button{*this, "Button", {20, 20, 80, 20}, "Press", PushButton::Default};
  int fTaken = 0;
};

TEST_F(Wait, WindowsRepaintAndTheUsersInputIsDropped) {
  struct Paints : QObject {
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      fCount += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int fCount = 0;
  } paints;
  Desk desk;
  desk.Show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.Native()));
  desk.Native().installEventFilter(&paints);
  QTimer::singleShot(5, [&] {
    desk.Disturb();
    desk.Native().update();
    for (const QWidget* window : QApplication::topLevelWidgets())
      EXPECT_EQ(window->isVisible(), window == &desk.Native()) << "nothing but the desk is shown";
  });
  EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/hang"), 3), "");
  EXPECT_GT(paints.fCount, 0);
  QTest::qWait(5);
  EXPECT_EQ(desk.fTaken, 0) << "nor is it kept for later";
  desk.Disturb();
  EXPECT_EQ(desk.fTaken, 3);
}

TEST_F(Wait, EndsWhenTheProgramQuits) {
  const int status = TestApplication().Run([&] {
    QTimer::singleShot(5, [] { Application::Quit(7); });
    EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/hang"), 1'000'000'000), "");
  });
  EXPECT_EQ(status, 7);
}
