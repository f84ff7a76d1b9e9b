// SPDX-License-Identifier: MIT
// Hands the removal of the installer to the cleanup program that travels in the package.
#include <algorithm>

#include "dialogs/Posing.h"
#include "package/CleanupMode.h"
#include "package/Scrambling.h"
#include "platform/Dialogs.h"
#include "platform/FolderLock.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Archives.h"
#include "util/Brake.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

namespace {

bool UserAgrees(std::int64_t mode) {
  constexpr auto kDeletes = GlobalsKv::Question::Deletes;
  if (mode == kCleanAskingBundle)
    return GlobalsKv::YesNoDlg("Delete this Setup file when finished?", kDeletes);
  if (mode == kCleanAskingFolder)
    return GlobalsKv::YesNoDlg("Delete folder containing Setup file when finished?", kDeletes);
  return true;
}

/// The folder that holds the bundle, or the bundle alone where that folder must stay: it holds what this run
/// has installed, or the bundle is a part of another one.
std::string Order(std::int64_t mode, const std::string& bundle, const std::vector<std::string>& installed) {
  if (mode == kCleanBundle || mode == kCleanAskingBundle) return "DeleteFile=" + bundle;
  const std::string running = ViewConst::RunningBundle();
  const FolderItem folder(ViewConst::MyExtractFilePath(bundle));
  const bool holdsInstalled = std::any_of(installed.begin(), installed.end(), [&](const std::string& path) {
    return ViewConst::FileExists(path) && LiesIn(FolderItem(path).ResolvedPath(), folder.ResolvedPath());
  });
  const bool inAnother = running != bundle || FolderItem(bundle).Parent().NativePath() != folder.NativePath();
  if (holdsInstalled || inAnother || !ViewConst::MayGoWithInstaller(folder.NativePath()))
    return "DeleteFile=" + running;
  return "DeleteFolder=" + folder.NativePath();
}

/// The place of the order is every run's: one that has been given is waited for, as long as its program
/// takes.
class OrderPlace {
 public:
  OrderPlace(const std::string& temporary, const std::string& order) {
    constexpr std::int64_t kMostTicks = 5 * 60;
    Machine& machine = Machine::Current();
    const std::int64_t end = temporary.empty() ? 0 : machine.Ticks() + kMostTicks;
    while (!machine.Ending() && machine.Ticks() < end) {
      if (!fLock) fLock = FolderLock::Take(FolderItem(temporary));
      if (fLock && !FolderItem(order).IsFile()) return;
      machine.DoEvents(50);
    }
  }

 private:
  std::optional<FolderLock> fLock;
};

/// An archive may hold the program's bundle itself, or what a bundle holds.
void BringToTop(const FolderItem& program) {
  if (program.Child("Contents").Exists()) return;
  const std::vector<FolderItem> items = program.Children();
  if (items.size() != 1 || !items.front().Child("Contents").Directory()) return;
  const FolderItem fresh = program.FreshSibling();
  // What can't be brought up can't be started either, and that is told.
  if (items.front().MoveFileTo(fresh) == FolderItem::Moved::Yes) static_cast<void>(fresh.MoveFileTo(program));
}

/// Unpacks the cleanup program to `stem` + ".app". False when that has failed, and has been told.
bool UnpackProgram(const std::string& data3, const std::string& temporary, const std::string& stem) {
  if (!temporary.empty()) {
    static_cast<void>(ViewConst::CopyFile(data3, temporary + "/Data3"));  // seen by the rename
    EncryptDecryptFileEnd(temporary + "/Data3", false);
  }
  if (temporary.empty() || !ViewConst::RenameFile(temporary + "/Data3", stem + ".zip")) {
    MessageBox("PostInstallCleanup Extraction Failed 1.");
    return false;
  }
  // What stands there is added to, but nowhere else.
  if (FolderItem(stem + ".app").Alias()) ViewConst::DeleteFile(stem + ".app");
  if (!ViewConst::ZipFileToFolder(stem + ".zip", stem + ".app", false)) {
    MessageBox("PostInstallCleanup Extraction Failed 2.");
    return false;
  }
  BringToTop(FolderItem(stem + ".app"));
  return true;
}

}  // namespace

void TessarineStubWindow::Cleanup() {
  if (fCleanup < kCleanBundle || fCleanup > kCleanAskingFolder || !UserAgrees(fCleanup)) return;
  const std::string bundle = ViewConst::BundleOf(Machine::Current().ExecutableFile());
  const std::string data3 = bundle + "/Contents/Resources/Data3";
  if (!ViewConst::FileExists(data3)) return;
  const std::string order = Order(fCleanup, bundle, fInstalled);
  const FolderItem doomed(order.substr(order.find('=') + 1));
  if (!doomed.Parent().IsWriteable() || !doomed.CanBeDeleted() ||
      !ViewConst::MayGoWithInstaller(doomed.NativePath())) {
    MessageBox("This can't be deleted: " + doomed.NativePath());
    return;
  }
  const std::string temporary = Machine::Current().TemporaryFolder();
  const std::string stem = temporary + "/PostInstallCleanup";
  const OrderPlace place(temporary, stem + ".data");
  if (!UnpackProgram(data3, temporary, stem)) return;
  // Half an order would name another folder, further up.
  std::string written;
  ViewConst::DataFileWrite(stem + ".data", order);
  ViewConst::DataFileRead(stem + ".data", written);
  const std::optional<FolderItem> program = GlobalsKv::MyGetFolderItem(stem + ".app");
  if (written == order && program && program->Launch(true)) return;
  ViewConst::DeleteFile(stem + ".data");
  MessageBox("PostInstallCleanup Extraction Failed 2.");
}
