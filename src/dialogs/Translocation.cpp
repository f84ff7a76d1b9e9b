// SPDX-License-Identifier: MIT
#include "dialogs/Translocation.h"

#include "dialogs/TGatekeeperTranslocationDlg.h"
#include "platform/Application.h"
#include "platform/Machine.h"

namespace {

/// A path is no option of the tool, whatever it begins with.
std::string AsPath(const std::string& path) {
  return path.starts_with('-') ? "./" + path : path;
}

}  // namespace

void PoseTranslocation() {
  // A password is about to be typed.
  Machine::Current().ForbidCoreDumps();
  TGatekeeperTranslocationDlg dialog;
  dialog.ShowModal();
  const Secret password = dialog.AdminPasswordEdit.TakeSecret();
  if (dialog.fBtnName == dialog.OKBtn.Name()) {
    // Whether it worked shows when the program is started anew.
    static_cast<void>(Machine::Current().ExecuteWithInput(
        "sudo", {"-S", "xattr", "-r", "-d", "com.apple.quarantine", AsPath(dialog.AppPathEdit.Text())},
        password));
  }
  Application::Quit(0);
}
