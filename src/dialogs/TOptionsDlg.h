// SPDX-License-Identifier: MIT
// Any number of extras is ticked.
#pragma once

#include "dialogs/ItemDialog.h"

class TOptionsDlg : public ItemDialog {
 public:
  TOptionsDlg() : ItemDialog("Select Options") { AnswerBy(QuitBtn, ContinueBtn); }
  /// All are off.
  void Offer(const std::vector<OfferedItem>& items) { OfferIn(OptionCheckBox, items, QuitBtn, ContinueBtn); }

  PushButton QuitBtn{*this, "QuitBtn", kQuitPlace, "Quit"};
  PushButton ContinueBtn{*this, "ContinueBtn", kContinuePlace, "Continue", PushButton::Default};
  ControlArray<CheckBox> OptionCheckBox{*this, "OptionCheckBox", kControls, kFirst, kDistance, "Untitled"};
};
