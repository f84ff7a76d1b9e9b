// SPDX-License-Identifier: MIT
#include "dialogs/Posing.h"

#include <memory>

#include "dialogs/MessageModal.h"
#include "util/GlobalsKv.h"
#include "util/Strings.h"

namespace {

constexpr int kTextInErrorString = 999;

/// Made at first use and kept: its title is the one last set.
std::unique_ptr<MessageModal> gSharedMessage;

MessageModal& SharedMessage() {
  if (gSharedMessage == nullptr) gSharedMessage = std::make_unique<MessageModal>();
  return *gSharedMessage;
}

void ShowShared(const std::string& text) {
  MessageModal& dialog = SharedMessage();
  dialog.MessageText.SetText(text);
  dialog.Btn1.SetVisible(false);
  dialog.Btn2.SetVisible(false);
  dialog.Btn3.SetCaption("OK");
  dialog.Btn3.SetRole(PushButton::Default);
  dialog.Btn3.SetVisible(true);
  DoShowModal(dialog);
}

std::string TextOrUnknown(const std::string& text) {
  return text.empty() ? GlobalsKv::MyGetString(-1) : text;
}

}  // namespace

namespace GlobalsKv {

void PoseConflictDialog() {
  if (gConflictType == 0) return;
  ShowShared(gConflictType == kTextInErrorString ? gErrorString : TextOrUnknown(MyGetString(gConflictType)));
}

void KvPoseInfoDialog(const std::string& message) {
  SharedMessage().SetTitle("Information Message");
  ShowShared(message);
  gConflictType = 0;
}

bool YesNoDlg(const std::string& question, Question kind) {
  gErrorString = question;
  gConflictType = kTextInErrorString;
  const bool answer = ViewConst::YesNoDialog(kTextInErrorString, kind);
  gConflictType = 0;
  return answer;
}

void DropSharedMessage() {
  gSharedMessage.reset();
}

}  // namespace GlobalsKv

bool ViewConst::YesNoDialog(int number, GlobalsKv::Question kind) {
  const std::string text =
      TextOrUnknown(number == kTextInErrorString ? GlobalsKv::gErrorString : GlobalsKv::MyGetString(number));
  MessageModal dialog;
  dialog.SetTitle("Confirmation");
  dialog.MessageText.SetText(LineEndingEncoding(text));
  dialog.Btn1.SetVisible(false);
  dialog.Btn2.SetCaption("Yes");
  dialog.Btn2.SetRole(PushButton::Default);
  dialog.Btn3.SetCaption("No");
  dialog.Btn3.SetRole(PushButton::Cancel);
  if (kind == GlobalsKv::Question::Deletes) dialog.GuardAnswers();
  MessageModalStartSize(dialog, text);
  ModalScriptShow(dialog);
  MessageModalEndSize(dialog, text);
  return dialog.fBtnName == "Yes";
}
