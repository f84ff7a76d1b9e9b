// SPDX-License-Identifier: MIT
// A machine with a fast timer, and a server to ask.
#pragma once

#include <QCoreApplication>

#include "http/Requests.h"
#include "http/Transfer.h"
#include "support/ModalScript.h"
#include "support/ScriptedServer.h"
#include "support/TestMachine.h"

/// Writes its events down, one line each.
class Listener : public HTTPSocket {
 public:
  void PageReceived(const std::string& url, int httpStatus, MemoryBlock content) override {
    fUrl = url;
    fEvents += std::to_string(httpStatus) + " " + content.Join() + "\n";
  }
  void Error(const std::string& reason) override {
    fReason = reason;
    fEvents += "error\n";
  }
  std::string fEvents, fUrl, fReason;
};

class HttpTest : public MachineTest {
 protected:
  /// All events of one GET.
  static std::string Events(Listener& listener, const std::string& url) {
    listener.Send("GET", url);
    while (listener.fEvents.empty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QTest::qWait(5);  // for one event too many
    return listener.fEvents;
  }
  static std::string Events(const std::string& url) {
    Listener listener;
    return Events(listener, url);
  }

  ScriptedServer fServer;
};
