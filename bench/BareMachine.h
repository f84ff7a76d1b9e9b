// SPDX-License-Identifier: MIT
// A machine without windows.
#pragma once

#include "platform/posix/PosixMachine.h"

class BareMachine : public PosixMachine {
 public:
  BareMachine() { Machine::Install(this); }
  void DoEvents(int /*milliseconds*/) override {}
  void Yield() override {}
  void ShowURL(const std::string& /*address*/) override {}

 protected:
  bool OpenDocument(const FolderItem& /*item*/) override { return false; }
};
