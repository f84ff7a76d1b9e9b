// SPDX-License-Identifier: MIT
// The walk through the action script after the expansion. A failure ends its own entry only.
#include "actions/ActionScript.h"
#include "actions/SharedDetour.h"
#include "dialogs/Posing.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"
#include "util/Rights.h"

using ViewConst::DirectoryExists;
using ViewConst::FileExists;

namespace {

void Complain(const std::string& what) {
  MessageBox("Install Error" + GlobalsKv::gLineBreak + GlobalsKv::gLineBreak + what);
}

std::string FromHome(const std::string& path) {
  return ExpandUserAccount(path, Machine::Current().HomeFolder());
}

void MakeFolders(const std::string& path) {
  GlobalsKv::gConflictType = 0;
  ViewConst::ForceDirectories(path, true);
  GlobalsKv::PoseConflictDialog();
}

bool MayCopy(const Action& action, const std::string& destination) {
  if (action.onlyIfMissing) return !FileExists(destination) && !DirectoryExists(destination);
  return !action.tested || DirectoryExists(FromHome(action.folderTest));
}

/// Into a folder that stands there; anything else is replaced by the whole new one.
bool CopyFolderTo(const std::string& source, const std::string& destination) {
  const FolderItem there(destination);
  const bool replaces = there.Exists() && (there.Alias() || !there.Directory());
  return replaces ? ViewConst::CopyFile(source, destination) : ViewConst::CopyFolder(source, destination);
}

void Copy(const Action& action, const std::string& source) {
  const std::string destination = FromHome(action.destination);
  if (!MayCopy(action, destination)) return;
  const std::string name = ViewConst::ExtractFileName(source);
  if (!FileExists(source)) {
    Complain("Missing File: " + name);
    return;
  }
  const std::string folder = ViewConst::MyExtractFilePath(destination);
  if (!folder.empty() && !DirectoryExists(folder)) MakeFolders(folder);
  // A copy onto itself would begin with the loss of the only one.
  if (FolderItem(source).Place() == FolderItem(destination).Place()) return;
  if (!DirectoryExists(source)) {
    if (!ViewConst::CopyFile(source, destination)) Complain("File Copy Failed: " + name);
  } else if (!CopyFolderTo(source, destination)) {
    Complain("Folder Copy Failed: " + name);
  } else if (GoesThroughSharedFolder(destination)) {
    TakeThroughSharedFolder(destination);
  }
}

}  // namespace

void TessarineStubWindow::PostInstallCopy() {
  ActionScript script(fPostCopy);
  while (const std::optional<Action> action = script.Next()) {
    if (Machine::Current().Ending()) return;
    switch (action->kind) {
      case Action::Kind::Delete:
        ViewConst::DeleteItem(FromHome(action->value));
        break;
      case Action::Kind::Shell:
        DoShellCmd(action->value);
        break;
      case Action::Kind::ShellFile:
        DoShellFile(action->value);
        break;
      case Action::Kind::CreateFolder:
        if (!DirectoryExists(FromHome(action->value))) MakeFolders(FromHome(action->value));
        fInstalled.push_back(FromHome(action->value));
        break;
      case Action::Kind::AllUsersFullAccess:
        ViewConst::AllUsersFullAccessOnMac(GlobalsKv::MyGetFolderItem(FromHome(action->value)));
        break;
      case Action::Kind::PreInstallDelete:
      case Action::Kind::PreInstallCopy:
        break;  // done ahead of the expansion
      case Action::Kind::Copy:
        Copy(*action, fTargetFolder + "/" + action->source);
        fInstalled.push_back(FromHome(action->destination));
        break;
      case Action::Kind::Invalid:
        Complain("Contact Publisher");
        break;
    }
    Machine::Current().Yield();
  }
}
