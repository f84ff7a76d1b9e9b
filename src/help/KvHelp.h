// SPDX-License-Identifier: MIT
// An application's help: the topic of the window in front, also where dialogs lie over each other.
#pragma once

#include <array>

#include "help/OmbrelController.h"

class KvHelp : public OmbrelController {
 public:
  /// Makes `topic` the current one and shows it.
  void Show(const std::string& topic);

  /// These bracket a dialog. Up to 20 may lie over each other; the topic of one beyond is not kept, but
  /// current as any other's. The end of a dialog brings back the topic below it; one too many beeps.
  void DialogStart(const std::string& topic);
  void DialogEnd();

  /// Sets the global to "Contents/Data" of the running bundle, or else to "Data" beside the executable,
  /// whether that is there or not.
  static void SetOmbrelRuntimeFolderPath();

  std::array<std::string, 21> fDialogHelpQueue;  // 0: from before all dialogs
  int fDialogHelpTopic = 0;                      // the innermost dialog's entry
};
