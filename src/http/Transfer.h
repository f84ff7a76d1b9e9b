// SPDX-License-Identifier: MIT
// The machinery of a blocking request: a thread that sends it, a socket that keeps its outcome, and a window
// that nobody sees, whose timer looks for the outcome.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/HTTPSocket.h"
#include "platform/Thread.h"
#include "platform/Timer.h"
#include "platform/Window.h"

class TKvHttp : public HTTPSocket {
 public:
  /// The page's content; empty also after a failure, and "Exception" where there was no memory for it.
  std::string fResponse;
  /// Set when the request has ended, in either way; after fResponse.
  std::atomic<bool> fDone = false;

  void PageReceived(const std::string& url, int httpStatus, MemoryBlock content) override;
  void Error(const std::string& reason) override;
};

/// Sends the request of its fields and is done; the outcome comes to the main thread.
class TKvHttpThread : public Thread {
 public:
  ~TKvHttpThread() override { Join(); }
  /// There before the thread is, for who watches it.
  std::shared_ptr<TKvHttp> fKvHttp = std::make_shared<TKvHttp>();
  std::string fURL;
  std::string fPost;  // empty: a GET

 protected:
  void Run() override;
};

/// Shown modally, it waits for the end of a request or of the time.
class THttpProgress : public Window {
 public:
  THttpProgress();
  Timer SecondTimer{1000, Timer::Mode::Multiple};
  std::int64_t fSecond = 0;   // counted so far
  std::int64_t fTimeout = 0;  // in seconds, for the whole of the request
  std::shared_ptr<TKvHttp> fKvHttp;

  void SecondTimer_Action();
};
