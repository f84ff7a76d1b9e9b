// SPDX-License-Identifier: MIT
// The two questions to the machine ahead of the window.
#include "package/Requirements.h"
#include "platform/BinaryStream.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

bool TessarineStubWindow::CheckMinOSorRAM() {
  std::int64_t megabytes = 0;
  std::int64_t major = 0;
  std::int64_t minor = 0;
  if (!fMinRAM.empty()) Machine::Current().InstalledMemory(megabytes);
  Machine::Current().SystemVersion(major, minor);
  bool met = true;
  for (const std::string& complaint :
       {VersionComplaint(fMinOS, major, minor), MemoryComplaint(fMinRAM, megabytes)}) {
    if (complaint.empty()) continue;
    MessageBox(complaint);
    met = false;
  }
  return met;
}

bool TessarineStubWindow::CheckAdminAccount() {
  const FolderItem folder = ViewConst::GetApplicationFolder();
  if (folder.Exists() && !folder.Directory()) {
    MessageBox("Cannot Install" + GlobalsKv::gLineBreak + GlobalsKv::gLineBreak + GlobalsKv::MyGetString(36) +
               folder.NativePath());
    return false;
  }
  const std::optional<FolderItem> probe =
      GlobalsKv::MyGetFolderItem(ViewConst::MyAbsolutePath(folder) + "X.txt");
  if (!probe) return false;
  // A file of that name that is somebody's stays; the folder's rights answer for it.
  bool success = probe->Exists() && folder.IsWriteable();
  if (!probe->Exists()) {
    { const std::optional<BinaryStream> file = BinaryStream::Create(*probe); }
    success = probe->Exists() && probe->Delete();
  }
  if (!success) {
    MessageBox("Cannot Install" + GlobalsKv::gLineBreak + GlobalsKv::gLineBreak +
               "An Administrator account is required to run this installer.");
  }
  return success;
}
