// SPDX-License-Identifier: MIT
// What ends the wait, and what is left of it.
#include "http/HttpTest.h"

class Wait : public HttpTest {
 protected:
  Wait() { fServer.Answer("/hang", {.end = Reply::Hang}); }
};

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

TEST_F(Wait, EndsWhenTheProgramQuits) {
  const int status = TestApplication().Run([&] {
    QTimer::singleShot(5, [] { Application::Quit(7); });
    EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/hang"), 1'000'000'000), "");
  });
  EXPECT_EQ(status, 7);
}
