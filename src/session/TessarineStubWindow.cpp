// SPDX-License-Identifier: MIT
#include "session/TessarineStubWindow.h"

#include "dialogs/MenuBar.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/Relocation.h"
#include "util/Paths.h"
#include "util/Strings.h"

TessarineStubWindow::TessarineStubWindow()
    : Window({396, 238}, "Install", {.whitePaper = true, .dialog = false}) {
  for (Control* control : {static_cast<Control*>(&ProgressBar1), static_cast<Control*>(&URLLabel),
                           static_cast<Control*>(&PictureCanvas), static_cast<Control*>(&LogoCanvas),
                           static_cast<Control*>(&CopyrightLabel), static_cast<Control*>(&InfoBtn)})
    control->SetVisible(false);
  QuitBtn.OnAction([this] { QuitBtn_Action(); });
  InstallBtn.OnAction([this] { InstallBtn_Action(); });
  InfoBtn.OnAction([this] { InfoBtn_Action(); });
  URLLabel.OnMouseDown([this] { URLLabel_MouseDown(); });
  AttachMenuBar(*this, MenuBar1());
}

void TessarineStubWindow::Event_Open() {
  const RunsFrom place = ReadLocation(ViewConst::GetApplicationPath(), TemporaryPath());
  if (place != RunsFrom::TemporaryFolder) {
    DoStartup();
    return;
  }
  Hide();
  MessageBox("Drag the installer out of the Downloads folder before running it.");
  Application::Quit(0);
}

void TessarineStubWindow::Event_Close() {
  Application::Quit(0);
}

void TessarineStubWindow::QuitBtn_Action() {
  Application::Quit(0);
}

void TessarineStubWindow::InstallBtn_Action() {
  InstallBtn.SetEnabled(false);
  OKBtnClicked();
  Application::Quit(0);
}

void TessarineStubWindow::InfoBtn_Action() {
  InfoBtnClicked();
}

bool TessarineStubWindow::URLLabel_MouseDown() {
  const std::string address = ViewConst::CompleteAddress(fURLActual);
  if (!address.empty()) Machine::Current().ShowURL(address);
  return false;
}
