// SPDX-License-Identifier: MIT
#include "session/App.h"

#include "dialogs/Posing.h"
#include "dialogs/Translocation.h"
#include "platform/Machine.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

int App::Run() {
  ViewConst::gTranslocated = PoseTranslocation;
  const int status = fApplication.Run([this] {
    Event_Open();
    LateStartup();
  });
  Machine::Current().LeaveClipboard();
  GlobalsKv::DropSharedMessage();
  fDefaultView.reset();
  return status;
}

void App::Event_Open() {
  GlobalsKv::KvAppInit();
  GlobalsKv::gIgnoreTranslocationError = true;
}

void App::LateStartup() {
  fDefaultView = std::make_unique<TessarineStubWindow>();
  fDefaultView->Event_Open();
  if (Application::Quitting()) return;
  fDefaultView->Show();
  fDefaultView->MyProcessToTop();
}
