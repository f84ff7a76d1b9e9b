// SPDX-License-Identifier: MIT
// The two dialogs in which the user picks: up to ten controls in a column, and two buttons.
#pragma once

#include <string>
#include <vector>

#include "dialogs/MenuBar.h"
#include "platform/ControlArray.h"
#include "platform/Window.h"

struct OfferedItem {
  std::string caption;
  std::string tag;
};

class ItemDialog : public Window {
 public:
  /// "OKBtn" or "Quit", by the button that ended the dialog; empty before.
  std::string fBtnName;

 protected:
  static constexpr int kControls = 10;
  static constexpr int kDistance = 32;
  static constexpr Rect kFirst{20, 14, 300, 20};
  static constexpr Rect kQuitPlace{148, 343, 80, 20};
  static constexpr Rect kContinuePlace{240, 343, 80, 20};

  explicit ItemDialog(const std::string& title) : Window({340, 383}, title) {
    AttachMenuBar(*this, MenuBar1());
  }

  void AnswerBy(PushButton& quitButton, PushButton& continueButton) {
    quitButton.OnAction([this] { End("Quit"); });
    continueButton.OnAction([this] { End("OKBtn"); });
  }

  /// Shows an item in each of the first controls and hides the others, whose room the window gives up.
  /// `items` are at least one and no more than there are controls.
  template <typename Kind>
  void OfferIn(ControlArray<Kind>& controls, const std::vector<OfferedItem>& items, PushButton& quitButton,
               PushButton& continueButton) {
    for (std::size_t i = 0; i < controls.Count(); ++i) {
      controls[i].SetVisible(i < items.size());
      if (i >= items.size()) continue;
      controls[i].SetCaption(items[i].caption);
      controls[i].SetHelpTag(items[i].tag);
    }
    controls[0].SetFocus();
    if (items.size() >= controls.Count()) return;
    const int top = controls[items.size()].Place().top;
    for (PushButton* button : {&quitButton, &continueButton}) {
      Rect place = button->Place();
      place.top = top;
      button->SetPlace(place);
    }
    Resize({ContentSize().width, top + 40});
  }

 private:
  void End(const std::string& answer) {
    fBtnName = answer;
    Hide();
  }
};
