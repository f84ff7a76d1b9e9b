// SPDX-License-Identifier: MIT
// A plain text that is read, and agreed to or declined.
#pragma once

#include "dialogs/AnsweringDialog.h"

class LicenseAgreementWindow : public AnsweringDialog {
 public:
  LicenseAgreementWindow()
      : AnsweringDialog({690, 410}, "License Agreement", {.resizable = true, .smallest = {690, 410}}) {
    AnswerBy({&QuitBtn, &OKBtn});
  }
  /// Makes the window `points` lower, which then is its smallest height as well.
  void LowerBy(int points) {
    const Size size = ContentSize();
    Resize({size.width, size.height - points});
  }

  TextArea AgreementEdit{*this, "AgreementEdit", {20, 14, 650, 344}, Lock::AllEdges};
  PushButton QuitBtn{*this, "QuitBtn", {498, 370, 80, 20}, "Quit", PushButton::Plain, Lock::BottomRight};
  PushButton OKBtn{*this, "OKBtn", {590, 370, 80, 20}, "I Agree", PushButton::Default, Lock::BottomRight};
};
