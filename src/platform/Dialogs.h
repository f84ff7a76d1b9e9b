// SPDX-License-Identifier: MIT
// The dialogs that the desktop's toolkit brings along.
#pragma once

#include <optional>
#include <string>

#include "platform/FolderItem.h"

/// The plain message box: a text, one OK button. Returns when it has been answered.
void MessageBox(const std::string& text);

class SelectFolderDialog {
 public:
  std::string Title;
  std::string ActionButtonCaption;
  std::string CancelButtonCaption;  // empty: the toolkit's own
  std::optional<FolderItem> InitialDirectory;

  /// No item when the user cancelled.
  std::optional<FolderItem> ShowModal();
};
