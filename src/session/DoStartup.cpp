// SPDX-License-Identifier: MIT
// From the open event to a window that waits for the user.
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "session/TessarineStubWindow.h"

void TessarineStubWindow::DoStartup() {
  MyProcessToTop();
  if (!ReadData()) {
    MessageBox(CustomLabel("Installation Failed", LabelText(13)));
    Application::Quit(0);
    return;
  }
  SetTitle(CustomLabel(Title(), fWindowTitle));
  if (!fInfo.empty()) InfoBtn.SetCaption(CustomLabel(InfoBtn.Caption(), LabelText(6)));
  QuitBtn.SetCaption(CustomLabel(QuitBtn.Caption(), LabelText(1)));
  InstallBtn.SetCaption(CustomLabel(InstallBtn.Caption(), LabelText(2)));
  if (!fCopyright.empty()) {
    CopyrightLabel.SetText(fCopyright);
    CopyrightLabel.SetVisible(true);
  }
  MessageLabel.SetText(fMessage);
  if (fCenterMessage) MessageLabel.SetAlignment(Label::Alignment::Centre);
  if (!fURLActual.empty() || !fURLDisplayed.empty()) {
    if (fURLDisplayed.empty()) fURLDisplayed = fURLActual;
    URLLabel.SetVisible(true);
    URLLabel.SetText(fURLDisplayed);
  }
  if (!fInfo.empty()) {
    InfoBtn.SetVisible(true);
    Refresh();
  }
}
