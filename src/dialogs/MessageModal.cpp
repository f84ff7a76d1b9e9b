// SPDX-License-Identifier: MIT
#include "dialogs/MessageModal.h"

#include "base/Encoding.h"
#include "dialogs/MenuBar.h"
#include "util/GlobalsKv.h"

namespace {

void Grow(MessageModal& dialog, int wider, int higher) {
  const Size size = dialog.ContentSize();
  dialog.Resize({size.width + wider, size.height + higher});
  Rect text = dialog.MessageText.Place();
  text.width += wider;
  text.height += higher;
  dialog.MessageText.SetPlace(text);
  for (PushButton* button : {&dialog.Btn1, &dialog.Btn2, &dialog.Btn3}) {
    Rect place = button->Place();
    place.left += wider;
    place.top += higher;
    button->SetPlace(place);
  }
}

void SetLeft(PushButton& button, int left) {
  Rect place = button.Place();
  place.left = left;
  button.SetPlace(place);
}

}  // namespace

MessageModal::MessageModal() : Window({572, 243}, "Error Message") {
  AttachMenuBar(*this, MenuBar1());
  Btn1.OnAction([this] { Btn1_Action(); });
  Btn2.OnAction([this] { Btn2_Action(); });
  Btn3.OnAction([this] { Btn3_Action(); });
}

void MessageModal::Close(const PushButton& pressed) {
  fBtnName = pressed.Caption();
  Hide();
}

Size MessageSizeStep(std::string_view message) {
  const std::size_t length = CharacterCount(message);
  if (length < 40 && message.find(GlobalsKv::gLineBreak) == std::string_view::npos) return {-250, -150};
  if (length < 200) return {-60, -50};
  if (length > 600) return {0, 200};
  if (length > 400) return {0, 100};
  return {0, 0};
}

void MessageModalStartSize(MessageModal& dialog, const std::string& message) {
  const Size step = MessageSizeStep(message);
  Grow(dialog, step.width, step.height);
  if (!dialog.Btn3.Visible()) {
    SetLeft(dialog.Btn2, dialog.Btn3.Place().left);
    SetLeft(dialog.Btn1, dialog.Btn2.Place().left);
  }
  if (!dialog.Btn2.Visible()) SetLeft(dialog.Btn1, dialog.Btn2.Place().left);
}

void MessageModalEndSize(MessageModal& dialog, const std::string& message) {
  const Size step = MessageSizeStep(message);
  Grow(dialog, -step.width, -step.height);
  SetLeft(dialog.Btn1, 288);
  SetLeft(dialog.Btn2, 380);
  SetLeft(dialog.Btn3, 472);
}
