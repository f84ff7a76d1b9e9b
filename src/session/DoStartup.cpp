// SPDX-License-Identifier: MIT
// From the open event to a window that waits for the user.
#include "dialogs/PixelPicture.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "session/TessarineStubWindow.h"

void TessarineStubWindow::DoStartup() {
  MyProcessToTop();
  if (!CheckAdminAccount()) {
    Application::Quit(0);
    return;
  }
  if (!ReadData()) {
    MessageBox(CustomLabel("Installation Failed", LabelText(LabelId::Failed)));
    Application::Quit(0);
    return;
  }
  if (!CheckMinOSorRAM()) {
    Application::Quit(0);
    return;
  }
  if (RunningRelocatedInstaller()) {
    GoOnAsCopy();
    return;
  }
  if (!DoExecuteBefore()) {
    Application::Quit(0);
    return;
  }
  Dress();
}

/// The installer that was started has asked for everything in front of the choices.
void TessarineStubWindow::GoOnAsCopy() {
  Hide();
  MyProcessToTop();
  InstallAll();
  Application::Quit(0);
}

void TessarineStubWindow::Dress() {
  SetTitle(CustomLabel(Title(), fWindowTitle));
  if (!fInfo.empty()) InfoBtn.SetCaption(CustomLabel(InfoBtn.Caption(), LabelText(LabelId::Info)));
  QuitBtn.SetCaption(CustomLabel(QuitBtn.Caption(), LabelText(LabelId::Quit)));
  InstallBtn.SetCaption(CustomLabel(InstallBtn.Caption(), LabelText(LabelId::Install)));
  if (!fCopyright.empty()) {
    CopyrightLabel.SetText(fCopyright);
    CopyrightLabel.SetVisible(true);
  }
  MessageLabel.SetText(fMessage);
  if (fCenterMessage) MessageLabel.SetAlignment(Label::Alignment::Centre);
  DressPictures();
  if (!fURLActual.empty() || !fURLDisplayed.empty()) {
    if (fURLDisplayed.empty()) fURLDisplayed = fURLActual;
    URLLabel.SetVisible(true);
    URLLabel.SetText(fURLDisplayed);
  }
  if (!fInfo.empty()) {
    InfoBtn.SetVisible(true);
    Refresh();
  }
  fDressed = true;
}

void TessarineStubWindow::DressPictures() {
  const auto dress = [](Canvas& canvas, std::int64_t width, std::int64_t height, const std::string& pixels) {
    std::optional<Picture> picture = PixelStringToPicture(width, height, pixels);
    if (!picture) return;
    picture->transparent = true;
    canvas.SetBackdrop(*picture);
    canvas.SetVisible(true);
  };
  dress(PictureCanvas, fPictureWidth, fPictureHeight, fPicturePixelStr);
  dress(LogoCanvas, fLogoWidth, fLogoHeight, fLogoPixelStr);
  if (const auto backdrop = PixelStringToPicture(fBackgroundWidth, fBackgroundHeight, fBackgroundPixelStr))
    SetBackdrop(*backdrop);
}
