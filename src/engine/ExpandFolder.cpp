// SPDX-License-Identifier: MIT
// From the package to an installed folder. One straight run: nothing is rolled back, and what fails
// is told to the user where it happens.
#include "dialogs/YesNoDialog.h"
#include "engine/Target.h"
#include "package/Scrambling.h"
#include "package/SplitSet.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Clock.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"
#include "util/Places.h"

using GlobalsKv::gLineBreak;
using ViewConst::DirectoryExists;
using ViewConst::LiesIn;

namespace {

/// May the folder at `target` be deleted and made anew? Not where a link on the way leads out of the
/// chosen folder, nor where nothing could be put in its place, nor what holds a disk or this installer.
bool IsSafeTarget(const std::string& parent, const std::string& target) {
  const FolderItem item(target);
  const std::string executable = FolderItem(Machine::Current().ExecutableFile()).ResolvedPath();
  return LiesIn(item.Parent().ResolvedPath(), FolderItem(parent).ResolvedPath()) &&
         item.Parent().IsWriteable() && !item.IsVolume() && !LiesIn(executable, item.ResolvedPath());
}

}  // namespace

void TessarineStubWindow::ExpandFolder() {
  InfoBtn.SetVisible(false);
  const FolderItem resources = ViewConst::ResourceFolder();
  std::string payloadPath;
  bool split = false;
  std::optional<FolderItem> afterProgram;
  if (resources.Directory()) {
    split = resources.Child(kFirstPiece).Exists();
    payloadPath = resources.Child(split ? kFirstPiece : "Data2").NativePath();
    if (!fExecuteAfterName.empty()) afterProgram = resources.Child(fExecuteAfterName);
  }
  if (split && RelocateInstaller(payloadPath)) {
    Application::Quit(0);
    return;
  }
  PreInstallCopy();
  const std::optional<std::string> archivePath = SettleTarget();
  if (!archivePath) return;
  if (fInstallationPatch && !PreparePatch()) return;
  // Without a Payload there is nothing to take the old installation's place.
  const bool hasPayload = !payloadPath.empty() && FolderItem(payloadPath).Length() > 0;
  if (hasPayload && !ClearTheWay()) return;
  const bool putDown = PutArchiveDown(payloadPath, split, *archivePath);
  if (Application::Quitting()) return;
  EncryptDecryptFileEnd(*archivePath, false);
  // A folder of that name is somebody else's.
  const std::optional<FolderItem> archive = GlobalsKv::MyGetFolderItem(*archivePath);
  if (archive && !archive->Directory()) {
    archive->Launch(true);
    // A copy that failed has been told already.
    if (!ZipFileProcess(*archivePath, *archive) && putDown) ShowInstallationFailed();
  }
  if (fInstallationPatch) ApplyInstallationPatch();
  PostInstallCopy();
  ZipFileDelete(*archivePath, afterProgram);
  if (SpecialPath(fExecuteAfterName) && ViewConst::FileExists(fExecuteAfterName))
    afterProgram = GlobalsKv::MyGetFolderItem(fExecuteAfterName);
  if (!afterProgram) return;
  afterProgram->Launch(true);
  // An abort has been shown to the user; there is nothing left to stop.
  static_cast<void>(CommunicateWithExecutable());
}

void TessarineStubWindow::ShowInstallationFailed() {
  MessageBox(CustomLabel("Installation Failed", LabelText(13)));
}

/// Makes fTargetFolder a full path. The archive's path, or none when there is no usable target.
std::optional<std::string> TessarineStubWindow::SettleTarget() {
  const std::string name = fTargetFolder;
  fTargetFolder.clear();
  if (!ViewConst::IsInnerName(name)) {
    ShowInstallationFailed();
    return std::nullopt;
  }
  const std::string parent = fApplicationFolder ? ViewConst::MyAbsolutePath(ViewConst::GetApplicationFolder())
                                                : SelectTargetFolder(ViewConst::GetApplicationPath(), true);
  if (parent.empty()) return std::nullopt;
  const Target target = PlanTarget(parent, name);
  if (!IsSafeTarget(parent, fInstallationPatch ? target.folder + "Patch" : target.folder)) {
    ShowInstallationFailed();
    return std::nullopt;
  }
  fTargetFolder = target.folder;
  return target.archive;
}

/// A patch needs its installation, and works on a folder of its own beside it.
bool TessarineStubWindow::PreparePatch() {
  if (!DirectoryExists(fTargetFolder)) {
    MessageBox(CustomLabel("Patch Failed.  No installation folder exists.", LabelText(18)));
    return false;
  }
  fTargetFolder += "Patch";
  if (DirectoryExists(fTargetFolder)) {
    ShowInstallinProgress();
    ViewConst::DeleteFolderOrApp(fTargetFolder);
  }
  return true;
}

bool TessarineStubWindow::MayReplaceTarget() {
  if (!fPromptToReplace) return true;
  YesNoDialog dialog;
  dialog.SetTitle(CustomLabel(dialog.Title(), LabelText(10)));
  dialog.ConfirmLabel1.SetText(CustomLabel(dialog.ConfirmLabel1.Text(), LabelText(11)));
  dialog.ConfirmLabel2.SetText(CustomLabel(dialog.ConfirmLabel2.Text(), LabelText(12)));
  dialog.CancelBtn.SetCaption(CustomLabel(dialog.CancelBtn.Caption(), LabelText(3)));
  dialog.OKBtn.SetCaption(CustomLabel(dialog.OKBtn.Caption(), LabelText(4)));
  dialog.ConfirmLabel3.SetText(fTargetFolder);
  dialog.ShowModal();
  return dialog.fBtnName == dialog.OKBtn.Name();
}

/// Deletes an earlier installation. False when it must stay, or can't be deleted.
bool TessarineStubWindow::ClearTheWay() {
  if (!DirectoryExists(fTargetFolder)) return true;
  if (!MayReplaceTarget()) return false;
  ViewConst::DeleteFolderOrApp(fTargetFolder);
  ShowInstallinProgress();
  Machine::Current().DoEvents(1);
  // Somebody else may be at work in the folder: time first, then the user.
  for (const int seconds : {1, 3})
    if (DirectoryExists(fTargetFolder)) ViewConst::Sleep(seconds);
  if (!DirectoryExists(fTargetFolder)) return true;
  MessageBox("Install Aborted" + gLineBreak + gLineBreak +
             "Unable to delete existing installed folder.  Reboot the computer and try again or manually "
             "delete the previously installed application folder.");
  return false;
}

/// Copies or joins the scrambled Payload where it is expanded. False when that failed, after a message, or
/// when the user ended the run.
bool TessarineStubWindow::PutArchiveDown(const std::string& payloadPath, bool split,
                                         const std::string& archivePath) {
  ShowInstallinProgress();
  ViewConst::DeleteFile(archivePath);
  if (split ? CombineSplitSetup(payloadPath, archivePath) : ViewConst::CopyFile(payloadPath, archivePath))
    return true;
  if (Application::Quitting()) return false;
  // Half an archive is of no use to anybody and takes room on a disk that may be full.
  ViewConst::DeleteFile(archivePath);
  ShowInstallationFailed();
  return false;
}
