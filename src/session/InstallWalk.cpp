// SPDX-License-Identifier: MIT
// From the user's click to the end of the run: notes, agreement, what is picked, expansion.
#include "dialogs/NoteDialogs.h"
#include "platform/Application.h"
#include "session/TessarineStubWindow.h"

void TessarineStubWindow::OKBtnClicked() {
  const std::string quit = LabelText(1);
  bool goOn = true;
  if (!fPreInstallNotes.empty()) {
    goOn = AskByNote({.text = fPreInstallNotes,
                      .title = CustomLabel("Pre-Installation Notes", LabelText(25)),
                      .quitCaption = quit,
                      .htmlCaption = CustomLabel("I Agree", LabelText(4)),
                      .plainCaption = CustomLabel("OK", LabelText(4)),
                      .lowered = IsShortNote(fPreInstallNotes)});
  }
  if (goOn && !fAgreement.empty()) {
    const std::string agree = CustomLabel("I Agree", LabelText(5));
    goOn = AskByNote({.text = fAgreement,
                      .title = CustomLabel("License Agreement", LabelText(7)),
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
  const std::string ok = CustomLabel("OK", LabelText(4));
  // Nothing is asked: the answer is of no interest.
  static_cast<void>(AskByNote({.text = fInfo,
                               .title = CustomLabel("Information", LabelText(8)),
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
  ShowMessage(CustomLabel("Install in Progress...", LabelText(19)));
}
