// SPDX-License-Identifier: MIT
// From the user's click to the end of the run: notes, agreement, what is picked, expansion.
#include "dialogs/NoteDialogs.h"
#include "platform/Application.h"
#include "session/TessarineStubWindow.h"

void TessarineStubWindow::OKBtnClicked() {
  const std::string quit = LabelText(LabelId::Quit);
  bool goOn = true;
  if (!fPreInstallNotes.empty()) {
    goOn =
        AskByNote({.text = fPreInstallNotes,
                   .title = CustomLabel("Pre-Installation Notes", LabelText(LabelId::PreInstallNotesTitle)),
                   .quitCaption = quit,
                   .htmlCaption = CustomLabel("I Agree", LabelText(LabelId::Ok)),
                   .plainCaption = CustomLabel("OK", LabelText(LabelId::Ok)),
                   .lowered = IsShortNote(fPreInstallNotes)});
  }
  if (goOn && !fAgreement.empty()) {
    const std::string agree = CustomLabel("I Agree", LabelText(LabelId::Agree));
    goOn = AskByNote({.text = fAgreement,
                      .title = CustomLabel("License Agreement", LabelText(LabelId::AgreementTitle)),
                      .quitCaption = quit,
                      .htmlCaption = agree,
                      .plainCaption = agree});
  }
  if (!goOn || Application::Quitting()) return;
  InstallBtn.SetEnabled(false);
  InstallAll();
  Application::Quit(0);
}

void TessarineStubWindow::InstallAll() {
  std::string choice;
  std::string options;
  if (!SelectChoiceAndOptions(choice, options)) return;
  ExpandFolder();
  // A copy has taken over, or the user had no further disc.
  if (Application::Quitting()) return;
  ExpandChoiceAndOptions(choice, options);
  if (!Application::Quitting()) Cleanup();
}

void TessarineStubWindow::InfoBtnClicked() {
  const std::string ok = CustomLabel("OK", LabelText(LabelId::Ok));
  // Nothing is asked: the answer is of no interest.
  static_cast<void>(AskByNote({.text = fInfo,
                               .title = CustomLabel("Information", LabelText(LabelId::InfoTitle)),
                               .htmlCaption = ok,
                               .plainCaption = ok,
                               .canDecline = false}));
}

void TessarineStubWindow::ShowInstallinProgress() {
  // A copy of the installer asks its questions without this window; the user should see it at work.
  if (!Visible()) {
    Dress();
    InstallBtn.SetEnabled(false);
    Show();
  }
  SetFocus();
  ShowMessage(CustomLabel("Install in Progress...", LabelText(LabelId::InProgress)));
}
