// SPDX-License-Identifier: MIT
#include "http/Transfer.h"

#include <new>
#include <utility>

void TKvHttp::PageReceived(const std::string& /*url*/, int /*httpStatus*/, MemoryBlock content) {
  try {
    fResponse = content.Join();
  } catch (const std::bad_alloc&) {
    fResponse = "Exception";
  }
  fDone = true;
}

void TKvHttp::Error(const std::string& /*reason*/) {
  fResponse.clear();
  fDone = true;
}

void TKvHttpThread::Run() {
  fKvHttp->SetRequestHeader("User-Agent", "Lumare");
  if (!fPost.empty()) fKvHttp->SetRequestContent(fPost, "application/x-www-form-urlencoded");
  fKvHttp->Send(fPost.empty() ? "GET" : "POST", fURL);
}

THttpProgress::THttpProgress() : Window({8, 8}, "", {.hidden = true}) {
  SecondTimer.OnAction([this] { SecondTimer_Action(); });
}

void THttpProgress::SecondTimer_Action() {
  ++fSecond;
  if (!fKvHttp->fDone && fTimeout > fSecond) return;
  Hide();
  SecondTimer.SetMode(Timer::Mode::Off);
}
