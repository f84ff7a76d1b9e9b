// SPDX-License-Identifier: MIT
// The real machine: POSIX, and the desktop as the toolkit sees it.
#pragma once

#include "platform/posix/PosixMachine.h"

class QtMachine : public PosixMachine {
 public:
  void DoEvents(int milliseconds) override;
  void Yield() override;
  bool Ending() override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void LeaveClipboard() override;
  void Beep() override;
  void ShowURL(const std::string& address) override;

 protected:
  bool OpenDocument(const FolderItem& item) override;

 private:
  std::int64_t fLastYield = 0;
  std::string fLastText;  // what the clipboard held as long as its owner answered
};
