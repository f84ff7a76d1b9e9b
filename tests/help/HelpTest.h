// SPDX-License-Identifier: MIT
// An application with help: its bundle stands in the folder "media", and so does its viewer.
#pragma once

#include "help/KvHelp.h"
#include "platform/qt/QtMachine.h"
#include "support/ModalScript.h"
#include "support/TestMachine.h"

class HelpTest : public MachineTest {
 protected:
  /// No bus, and the toolkit runs in waits.
  HelpTest() {
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::setenv("XDG_RUNTIME_DIR", fTree.Path().c_str(), 1);
    fMachine.fPump = [this] { fToolkit.DoEvents(0); };
    fTree.Folder("media/Viewer.app");
    fTree.Write("media/Guide.hlp", "pages");
    OmbrelRuntimeFolderPath.clear();
  }
  ~HelpTest() override { EXPECT_EQ(fScript.TakeProblems(), ""); }

  QtMachine fToolkit;
  ModalScript fScript;
  KvHelp fHelp;
};
