// SPDX-License-Identifier: MIT
// The wait: how long it lasts, what ends it, and what happens in it to windows and to the user's input.
#include <QPushButton>

#include "http/HttpTest.h"
#include "platform/Controls.h"
#include "platform/qt/NativeWindow.h"

class Wait : public HttpTest {};

TEST_F(Wait, LastsWholeSecondsUntilTheEndOrTheLimit) {
  const struct {
    bool done;
    std::int64_t limit, seconds;
  } rows[] = {{true, 60, 1}, {true, 0, 1}, {false, 0, 1}, {false, 1, 1}, {false, -5, 1}, {false, 4, 4}};
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

TEST_F(Wait, ATimerRunsOnceOrAgainAndAgain) {
  int once = 0, often = 0;
  Timer single(1000, Timer::Mode::Single);
  Timer multiple(1000, Timer::Mode::Multiple);
  const Timer idle(1000, Timer::Mode::Single);  // without an action
  single.OnAction([&] { ++once; });
  multiple.OnAction([&] {
    if (++often == 4) multiple.SetMode(Timer::Mode::Off);
  });
  ASSERT_TRUE(QTest::qWaitFor([&] { return often == 4; }, 10'000));
  QTest::qWait(fMachine.TimerPeriod(3000));
  EXPECT_EQ(once, 1);
  EXPECT_EQ(often, 4);
}

TEST_F(Wait, ALateAnswerIsNobodysAndEndsWithTheCall) {
  fServer.Answer("/slow", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n", .drip = "drop"});
  fServer.Answer("/hang", {.end = Reply::Hang});
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

TEST_F(Wait, ASocketMayGoInItsOwnEvent) {
  struct OneShot : Listener {
    void PageReceived(const std::string& /*url*/, int /*httpStatus*/, MemoryBlock /*content*/) override {
      fHolder->reset();
    }
    void Error(const std::string& /*reason*/) override { fHolder->reset(); }
    std::unique_ptr<OneShot>* fHolder = nullptr;
  };
  fServer.Answer("/", {Page("200 OK", "hello")});
  for (const std::string& address : {fServer.Address("/"), fServer.Address("/cut"), std::string("nothing")}) {
    auto http = std::make_unique<OneShot>();
    http->fHolder = &http;
    http->Send("GET", address);
    ASSERT_TRUE(QTest::qWaitFor([&] { return http == nullptr; }, 10'000));
  }
}

/// A window with a button, which notes all that happens to it.
struct Desk : Window {
  Desk() : Window({200, 100}, "Desk") {
    Button.OnAction([this] { ++fPressed; });
    Native().installEventFilter(&fWatch);
  }
  /// What the user and the system do in any wait.
  void Disturb() {
    auto* button = Native().findChild<QPushButton*>("Button");
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::keyClick(&Native(), Qt::Key_Return);
    QInputMethodEvent word("x", {});
    QCoreApplication::sendEvent(&Native(), &word);
    QCloseEvent request;
    QCoreApplication::sendEvent(Native().windowHandle(), &request);
    fWatch.fPainted = 0;
    Native().update();
  }
  bool Event_CancelClose(bool /*appQuitting*/) override {
    ++fClosed;
    return true;
  }
  PushButton Button{*this, "Button", {20, 20, 80, 20}, "Press", PushButton::Default};
  int fPressed = 0, fClosed = 0;

  struct Watch : QObject {
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++fPainted;
      if (event->type() == QEvent::InputMethod) ++fTyped;
      return false;
    }
    int fPainted = 0, fTyped = 0;
  } fWatch;
};

TEST_F(Wait, WindowsRepaintAndTheUsersInputIsDropped) {
  Desk desk;
  desk.Show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.Native()));
  fServer.Answer("/hang", {.end = Reply::Hang});
  int windows = 0;
  QTimer::singleShot(5, [&] {
    desk.Disturb();
    for (const QWidget* window : QApplication::topLevelWidgets()) windows += window->isVisible() ? 1 : 0;
  });
  EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/hang"), 3), "");
  EXPECT_EQ(windows, 1) << "nothing but the desk is shown";
  EXPECT_GT(desk.fWatch.fPainted, 0);
  EXPECT_EQ(desk.fPressed + desk.fClosed + desk.fWatch.fTyped, 0);
  EXPECT_TRUE(desk.Visible());
  QTest::qWait(5);
  EXPECT_EQ(desk.fPressed + desk.fClosed, 0) << "nor is it kept for later";

  desk.Disturb();
  EXPECT_EQ(desk.fPressed, 2);
  EXPECT_EQ(desk.fClosed, 1);
}

TEST_F(Wait, EndsWhenTheProgramQuits) {
  fServer.Answer("/hang", {.end = Reply::Hang});
  std::string answer = "none";
  const int status = TestApplication().Run([&] {
    QTimer::singleShot(5, [] { Application::Quit(7); });
    answer = GlobalsKv::HttpGet(fServer.Address("/hang"), 1'000'000'000);
  });
  EXPECT_EQ(status, 7);
  EXPECT_EQ(answer, "");
}
