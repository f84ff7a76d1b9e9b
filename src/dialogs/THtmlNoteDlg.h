// SPDX-License-Identifier: MIT
// A page that is read, and agreed to or declined.
#pragma once

#include "dialogs/AnsweringDialog.h"

class THtmlNoteDlg : public AnsweringDialog {
 public:
  THtmlNoteDlg() : AnsweringDialog({762, 530}, "", {.resizable = true, .smallest = {64, 64}}) {
    AnswerBy({&ContinueBtn, &QuitBtn});
  }
  HTMLViewer MyHTMLViewer{*this, "MyHTMLViewer", {0, 0, 762, 479}, Lock::AllEdges};
  PushButton ContinueBtn{*this,      "ContinueBtn",       {642, 491, 100, 34},
                         "Continue", PushButton::Default, Lock::BottomRight};
  PushButton QuitBtn{*this, "QuitBtn", {530, 491, 100, 34}, "Quit", PushButton::Cancel, Lock::BottomRight};
};
