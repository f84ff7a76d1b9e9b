// SPDX-License-Identifier: MIT
// An installer on several discs goes on in a copy of itself, so that its disc can be taken out.
#include "package/SplitSet.h"
#include "platform/Dialogs.h"
#include "platform/FolderLock.h"
#include "platform/Machine.h"
#include "platform/WaitCursor.h"
#include "session/Relocation.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

namespace {

/// Copies that earlier runs have left, and from which no program runs any more.
void RemoveOldCopies(const std::string& temporaryPath) {
  for (const FolderItem& item : FolderItem(temporaryPath).Children()) {
    const bool copy = ReadLocation(item.NativePath() + "/", temporaryPath) == RunsFrom::OwnCopy;
    // One that is still being made has no program yet, but who makes it holds it.
    if (copy && !Machine::Current().IsRunBelow(item) && FolderLock::Take(item)) item.DeleteTree();
  }
}

/// A new folder for a copy; none when it can't be made.
std::optional<FolderItem> MakeCopyFolder(const std::string& temporaryPath) {
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    const FolderItem folder(temporaryPath + std::to_string(GlobalsKv::gRandom->InRange(1000, 9999)));
    if (!folder.Exists() && folder.CreateAsFolder()) return folder;
  }
  return std::nullopt;
}

/// False when no copy runs now; nothing of it stays then. `lock` is to be held as long as this run lasts.
bool StartCopy(const FolderItem& bundle, const std::string& sourceFolder, const std::string& temporaryPath,
               std::optional<FolderLock>& lock) {
  const WaitCursor cursor;
  const std::optional<FolderItem> folder = MakeCopyFolder(temporaryPath);
  if (!folder) return false;
  lock = FolderLock::Take(*folder);
  WriteSourceFolderNote(folder->NativePath(), sourceFolder);
  const FolderItem copy = folder->Child(bundle.Name());
  // The bundle may hold more programs, and need not say which one is the installer.
  const std::string inside = Machine::Current().ExecutableFile().substr(bundle.NativePath().size());
  const FolderItem program(copy.NativePath() + inside);
  if (ViewConst::CopyFile(bundle.NativePath(), copy.NativePath()) && !Machine::Current().Ending() &&
      program.Launch(true))
    return true;
  folder->DeleteTree();
  return false;
}

}  // namespace

bool TessarineStubWindow::RunningRelocatedInstaller() {
  return ReadLocation(ViewConst::GetApplicationPath(), TemporaryPath()) != RunsFrom::Anywhere;
}

bool TessarineStubWindow::RelocateInstaller(const std::string& firstPiecePath) {
  const std::string temporaryPath = TemporaryPath();
  const std::string sourceFolder = ViewConst::GetApplicationPath();
  if (ReadLocation(sourceFolder, temporaryPath) != RunsFrom::Anywhere) return false;
  if (!ViewConst::FileExists(firstPiecePath)) return false;
  const FolderItem bundle(ViewConst::RunningBundle());
  Machine::Current().SetClipboardText(sourceFolder);
  if (!temporaryPath.empty()) RemoveOldCopies(temporaryPath);
  const bool started = !temporaryPath.empty() && StartCopy(bundle, sourceFolder, temporaryPath, fCopyLock);
  if (!started && !Machine::Current().Ending())
    MessageBox(CustomLabel("Installation Failed", LabelText(LabelId::Failed)));
  return true;
}
