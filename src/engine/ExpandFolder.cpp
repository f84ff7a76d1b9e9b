// SPDX-License-Identifier: MIT
// From the package to an installed folder. One straight run: what fails is told to the user where it happens,
// and leaves an earlier installation as it was.
#include "dialogs/YesNoDialog.h"
#include "engine/Target.h"
#include "package/SplitSet.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "platform/PrivateFolder.h"
#include "session/TessarineStubWindow.h"
#include "util/Brake.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

using GlobalsKv::gLineBreak;
using ViewConst::DirectoryExists;

namespace {

/// May the folder at `target` be deleted and made anew? Not where a link on the way leads out of the
/// chosen folder, nor where nothing could be put in its place, nor what holds a disk or this installer.
bool IsSafeTarget(const std::string& parent, const std::string& target) {
  const FolderItem item(target);
  // What lies there goes sooner or later.
  const std::string temporary = Machine::Current().TemporaryFolder();
  if (!temporary.empty() && LiesIn(item.ResolvedPath(), FolderItem(temporary).ResolvedPath())) return false;
  if (LiesIn(item.Parent().ResolvedPath(), FolderItem(ViewConst::RunningBundle()).ResolvedPath()))
    return false;
  // What can't be deleted at all is told later, with the advice what to do.
  return LiesIn(item.Parent().ResolvedPath(), FolderItem(parent).ResolvedPath()) &&
         item.Parent().IsWriteable() && !item.IsVolume() &&
         (ViewConst::MayGo(target) || !item.CanBeDeleted());
}

}  // namespace

void TessarineStubWindow::ExpandFolder() {
  InfoBtn.SetVisible(false);
  const FolderItem resources = ViewConst::ResourceFolder();
  Payload payload;
  std::optional<FolderItem> afterProgram;
  if (resources.Directory()) {
    payload.split = resources.Child(kFirstPiece).Exists();
    payload.path = resources.Child(payload.split ? kFirstPiece : "Data2").NativePath();
    if (!fExecuteAfterName.empty()) afterProgram = resources.Child(fExecuteAfterName);
  }
  if (payload.split && RelocateInstaller(payload.path)) {
    Application::Quit(0);
    return;
  }
  PreInstallCopy();
  const std::optional<Target> target = SettleTarget();
  if (!target || Application::Quitting()) return;
  if (fInstallationPatch && !PreparePatch()) return;
  bool installed = false;
  // Without a Payload there is nothing to take the old installation's place.
  if (payload.path.empty() || FolderItem(payload.path).Length() == 0) {
    ShowInstallationFailed("The package holds no software.");
  } else {
    if (!MayTakeThePlace()) return;
    // A failure has been told; the publisher's actions follow all the same.
    installed = InstallPayload(payload);
  }
  if (Application::Quitting()) return;
  if (fInstallationPatch) ApplyInstallationPatch();
  PostInstallCopy();
  if (!Application::Quitting()) StartAfterProgram(afterProgram, installed ? target->archive : "");
}

/// One that lies in the package is launched a second time, to be heard.
void TessarineStubWindow::StartAfterProgram(std::optional<FolderItem> program, const std::string& archive) {
  Machine::Current().ForgetLaunched();
  if (program) fStale = Machine::Current().ClipboardText();
  ZipFileDelete(archive, program);
  if (SpecialPath(fExecuteAfterName) && ViewConst::FileExists(fExecuteAfterName))
    program = GlobalsKv::MyGetFolderItem(fExecuteAfterName);
  if (!program) return;
  // An abort has been shown to the user; there is nothing left to stop.
  if (program->Launch(true)) static_cast<void>(CommunicateWithExecutable());
}

void TessarineStubWindow::ShowInstallationFailed(const std::string& reason) {
  const std::string text = CustomLabel("Installation Failed", LabelText(LabelId::Failed));
  MessageBox(reason.empty() ? text : text + gLineBreak + gLineBreak + reason);
}

/// Makes fTargetFolder a full path. None when there is no usable target.
std::optional<Target> TessarineStubWindow::SettleTarget() {
  const std::string name = fTargetFolder;
  fTargetFolder.clear();
  if (!IsTargetName(name)) {
    ShowInstallationFailed();
    return std::nullopt;
  }
  const std::string parent = fApplicationFolder ? ViewConst::MyAbsolutePath(ViewConst::GetApplicationFolder())
                                                : SelectTargetFolder(StartedFrom(), true);
  if (parent.empty()) return std::nullopt;
  Target target = PlanTarget(parent, name);
  if (!IsSafeTarget(parent, fInstallationPatch ? target.folder + kPatchSuffix : target.folder)) {
    ShowInstallationFailed("Nothing can be installed to " + target.folder + ".");
    return std::nullopt;
  }
  fTargetFolder = target.folder;
  fInstalled.push_back(target.folder);
  ViewConst::Keep(FolderItem(target.folder).Parent().NativePath());
  PrivateFolder::TidyUp(FolderItem(target.folder).Parent());
  return target;
}

/// A patch needs its installation, and works on a folder of its own beside it.
bool TessarineStubWindow::PreparePatch() {
  if (!DirectoryExists(fTargetFolder)) {
    MessageBox(CustomLabel("Patch Failed.  No installation folder exists.", LabelText(LabelId::PatchFailed)));
    return false;
  }
  fTargetFolder += kPatchSuffix;
  if (DirectoryExists(fTargetFolder)) {
    ShowInstallinProgress();
    ViewConst::DeleteFolderOrApp(fTargetFolder);
  }
  return true;
}

bool TessarineStubWindow::MayReplaceTarget() {
  if (!fPromptToReplace) return true;
  YesNoDialog dialog;
  dialog.SetTitle(CustomLabel(dialog.Title(), LabelText(LabelId::ConfirmTitle)));
  dialog.ConfirmLabel1.SetText(CustomLabel(dialog.ConfirmLabel1.Text(), LabelText(LabelId::TargetExists)));
  dialog.ConfirmLabel2.SetText(CustomLabel(dialog.ConfirmLabel2.Text(), LabelText(LabelId::DeleteTarget)));
  dialog.CancelBtn.SetCaption(CustomLabel(dialog.CancelBtn.Caption(), LabelText(LabelId::Cancel)));
  dialog.OKBtn.SetCaption(CustomLabel(dialog.OKBtn.Caption(), LabelText(LabelId::Ok)));
  dialog.ConfirmLabel3.SetText(fTargetFolder);
  dialog.ShowModal();
  return dialog.fBtnName == dialog.OKBtn.Name();
}

/// Asks for the place of an earlier installation. False when that must stay, or can't be deleted: nothing has
/// been touched then.
bool TessarineStubWindow::MayTakeThePlace() {
  if (!DirectoryExists(fTargetFolder)) return true;
  if (!MayReplaceTarget()) return false;
  if (FolderItem(fTargetFolder).CanBeDeleted()) return true;
  MessageBox("Install Aborted" + gLineBreak + gLineBreak +
             "Unable to delete existing installed folder.  Reboot the computer and try again or manually "
             "delete the previously installed application folder.");
  return false;
}
