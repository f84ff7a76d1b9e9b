// SPDX-License-Identifier: MIT
// The question before an existing target folder is deleted. Other questions: YesNoDlg in Posing.h.
#pragma once

#include <string>

#include "dialogs/AnsweringDialog.h"

class YesNoDialog : public AnsweringDialog {
 public:
  YesNoDialog() : AnsweringDialog({452, 155}, "Confirmation") {
    AnswerBy({&OKBtn, &CancelBtn});
    GuardAnswers();
  }
  PushButton OKBtn{*this, "OKBtn", {352, 115, 80, 20}, "OK", PushButton::Default};
  PushButton CancelBtn{*this, "CancelBtn", {260, 115, 80, 20}, "Cancel"};
  Label ConfirmLabel1{*this, "ConfirmLabel1", {20, 14, 412, 20}, "Destination folder already exists."};
  Label ConfirmLabel2{*this, "ConfirmLabel2", {20, 37, 412, 20}, "Delete folder to continue?"};
  Label ConfirmLabel3{*this, "ConfirmLabel3", {20, 61, 412, 42}, "Target Folder Path", Label::MultiLine};
};
