// SPDX-License-Identifier: MIT
// A window that is closed by its buttons alone and tells which one it was.
#pragma once

#include <initializer_list>
#include <string>

#include "dialogs/MenuBar.h"
#include "platform/Controls.h"
#include "platform/Window.h"

class AnsweringDialog : public Window {
 public:
  /// The control name of the button that closed the window; empty before.
  std::string fBtnName;

 protected:
  AnsweringDialog(Size size, const std::string& title, const WindowStyle& style = {})
      : Window(size, title, style) {
    AttachMenuBar(*this, MenuBar1());
  }

  void AnswerBy(std::initializer_list<PushButton*> buttons) {
    for (PushButton* button : buttons) {
      button->OnAction([this, button] {
        fBtnName = button->Name();
        Hide();
      });
    }
  }
};
