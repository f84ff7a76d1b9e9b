// SPDX-License-Identifier: MIT
// One of several alternatives is picked.
#pragma once

#include "dialogs/ItemDialog.h"

class TChoiceDlg : public ItemDialog {
 public:
  TChoiceDlg() : ItemDialog("Pick One Choice") { AnswerBy(QuitBtn, ContinueBtn); }
  /// The first one is on.
  void Offer(const std::vector<OfferedItem>& items) {
    OfferIn(ChoiceRadio, items, QuitBtn, ContinueBtn);
    ChoiceRadio[0].SetValue(true);
  }

  ControlArray<RadioButton> ChoiceRadio{*this, "ChoiceRadio", kControls, kFirst, kDistance, "Untitled"};
  PushButton QuitBtn{*this, "QuitBtn", kQuitPlace, "Quit"};
  PushButton ContinueBtn{*this, "ContinueBtn", kContinuePlace, "Continue", PushButton::Default};
};
