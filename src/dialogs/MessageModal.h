// SPDX-License-Identifier: MIT
// The one dialog for text of unknown length: a message and up to three buttons, in five sizes.
#pragma once

#include <string>
#include <string_view>

#include "platform/Controls.h"
#include "platform/Window.h"

class MessageModal : public Window {
 public:
  MessageModal();
  /// The text scrolls and can be selected where the dialog is too small for it.
  TextArea MessageText{*this, "MessageText", {20, 14, 532, 177}, Lock::None, TextArea::Message};
  PushButton Btn1{*this, "Btn1", {288, 203, 80, 20}, "Btn1"};
  PushButton Btn2{*this, "Btn2", {380, 203, 80, 20}, "Btn2"};
  PushButton Btn3{*this, "Btn3", {472, 203, 80, 20}, "Btn3"};
  /// The caption of the button that closed the dialog.
  std::string fBtnName;

  void Btn1_Action() { Close(Btn1); }
  void Btn2_Action() { Close(Btn2); }
  void Btn3_Action() { Close(Btn3); }

 private:
  void Close(const PushButton& pressed);
};

/// Both show a window and return when it has been hidden: one for the shared dialog, one for sized ones.
inline void DoShowModal(Window& window) {
  window.ShowModal();
}
inline void ModalScriptShow(Window& window) {
  DoShowModal(window);
}

/// How much a message's dialog differs from the design, by its number of characters and line breaks.
Size MessageSizeStep(std::string_view message);

/// Sizes the dialog for the message and closes up the visible buttons at the right edge. The buttons'
/// visibility must be set before.
void MessageModalStartSize(MessageModal& dialog, const std::string& message);

/// Undoes MessageModalStartSize for the same message.
void MessageModalEndSize(MessageModal& dialog, const std::string& message);
