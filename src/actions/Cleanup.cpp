// SPDX-License-Identifier: MIT
// Hands the removal of the installer to the cleanup program that travels in the package.
#include "dialogs/Posing.h"
#include "package/Scrambling.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Archives.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

namespace {

enum Mode { kNothing = 0, kBundle = 1, kFolder = 2, kAskBundle = 3, kAskFolder = 4 };

bool UserAgrees(std::int64_t mode) {
  if (mode == kAskBundle) return GlobalsKv::YesNoDlg("Delete this Setup file when finished?");
  if (mode == kAskFolder) return GlobalsKv::YesNoDlg("Delete folder containing Setup file when finished?");
  return true;
}

std::string Order(std::int64_t mode, const std::string& bundle) {
  if (mode == kFolder || mode == kAskFolder) return "DeleteFolder=" + ViewConst::MyExtractFilePath(bundle);
  return "DeleteFile=" + bundle;
}

}  // namespace

void TessarineStubWindow::Cleanup() {
  if (fCleanup < kBundle || fCleanup > kAskFolder || !UserAgrees(fCleanup)) return;
  const std::string executable = Machine::Current().ExecutableFile();
  const std::string bundle = ViewConst::BundleOf(executable);
  const std::string data3 = bundle + "/Contents/Resources/Data3";
  const std::string temporary = Machine::Current().TemporaryFolder();
  if (!ViewConst::FileExists(data3) || temporary.empty()) return;
  const std::string stem = temporary + "/PostInstallCleanup";
  static_cast<void>(ViewConst::CopyFile(data3, temporary + "/Data3"));  // seen by the rename
  EncryptDecryptFileEnd(temporary + "/Data3", false);
  if (!ViewConst::RenameFile(temporary + "/Data3", stem + ".zip")) {
    MessageBox("PostInstallCleanup Extraction Failed 1.");
    return;
  }
  // What stands there is added to, but nowhere else.
  if (FolderItem(stem + ".app").Alias()) ViewConst::DeleteFile(stem + ".app");
  if (!ViewConst::ZipFileToFolder(stem + ".zip", stem + ".app", false)) {
    MessageBox("PostInstallCleanup Extraction Failed 2.");
    return;
  }
  // Half an order would name another folder, further up.
  const std::string order = Order(fCleanup, bundle);
  std::string written;
  ViewConst::DataFileWrite(stem + ".data", order);
  ViewConst::DataFileRead(stem + ".data", written);
  if (written != order) return;
  if (const std::optional<FolderItem> program = GlobalsKv::MyGetFolderItem(stem + ".app"))
    program->Launch(true);
}
