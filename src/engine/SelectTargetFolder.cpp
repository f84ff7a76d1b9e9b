// SPDX-License-Identifier: MIT
// The user picks the folder that the target folder goes into.
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

std::string TessarineStubWindow::SelectTargetFolder(const std::string& path, bool cancelGivesEmpty) {
  SelectFolderDialog dialog;
  dialog.Title = CustomLabel(dialog.Title, LabelText(LabelId::FolderTitle));
  dialog.ActionButtonCaption = CustomLabel("Select", LabelText(LabelId::FolderSelect));
  dialog.CancelButtonCaption = CustomLabel(dialog.CancelButtonCaption, LabelText(LabelId::Cancel));
  dialog.InitialDirectory = GlobalsKv::MyGetFolderItem(path);
  const std::optional<FolderItem> chosen = dialog.ShowModal();
  if (!chosen) return cancelGivesEmpty ? "" : path;
  if (!chosen->IsWriteable()) {
    MessageBox(CustomLabel("Cannot write to selected location.", LabelText(LabelId::CannotWrite)));
    return "";
  }
  std::string folder = ViewConst::MyAbsolutePath(chosen);
  ViewConst::DropTrailingPathSeparator(folder);
  return folder;
}
