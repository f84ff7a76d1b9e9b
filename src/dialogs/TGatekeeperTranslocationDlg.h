// SPDX-License-Identifier: MIT
// What to do about a program that the system runs from another place than the user's.
#pragma once

#include "dialogs/AnsweringDialog.h"

class TGatekeeperTranslocationDlg : public AnsweringDialog {
 public:
  TGatekeeperTranslocationDlg() : AnsweringDialog({600, 237}, "Gatekeeper Translocation Issue") {
    AnswerBy({&CancelBtn, &OKBtn});
    AppPathEdit.SetFocus();
  }
  Label Label1{
      *this,
      "Label1",
      {20, 19, 560, 127},
      "Gatekeeper is blocking this application due to the process in which it was downloaded to your "
      "computer, "
      "because it was launched from within the Downloads folder or because of a GateKeeper OS bug.  \r\r"
      "To correct the issue, first click Cancel and move this app to the Applications folder.  If this "
      "dialog is "
      "presented again, carefully enter the exact path to the Application including the suffix .app and your "
      "Admin account password below, then click OK.",
      Label::MultiLine};
  Label Label2{*this, "Label2", {20, 164, 100, 20}, "Application Path:"};
  Label Label3{*this, "Label3", {20, 196, 100, 20}, "Admin Password:"};
  TextField AppPathEdit{*this, "AppPathEdit", {139, 163, 441, 22}, "/Applications/AppFolder/AppName.app"};
  TextField AdminPasswordEdit{*this, "AdminPasswordEdit", {139, 195, 147, 22}};
  PushButton CancelBtn{*this, "CancelBtn", {408, 196, 80, 20}, "Cancel", PushButton::Cancel};
  PushButton OKBtn{*this, "OKBtn", {500, 196, 80, 20}, "OK", PushButton::Default};
};
