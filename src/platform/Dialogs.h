// SPDX-License-Identifier: MIT
// The message box and the folder dialog.
#pragma once

#include <optional>
#include <string>

#include "platform/FolderItem.h"

/// The plain message box: a text as it stands, which scrolls where the screen is too small, and one OK
/// button. Returns when it has been answered.
void MessageBox(const std::string& text);

class SelectFolderDialog {
 public:
  std::string Title;
  std::string ActionButtonCaption;
  std::string CancelButtonCaption;  // empty: the toolkit's own
  std::optional<FolderItem> InitialDirectory;

  /// The folder that was typed or highlighted, else the one that was shown. No item when the user cancelled.
  std::optional<FolderItem> ShowModal();
};
