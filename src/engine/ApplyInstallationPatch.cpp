// SPDX-License-Identifier: MIT
// A patch folder is merged into the installation that it stands beside, file by file.
#include "engine/PatchNames.h"
#include "engine/Target.h"
#include "platform/Dialogs.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Clock.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/OpenedFolder.h"
#include "util/Paths.h"
#include "util/Rights.h"

using GlobalsKv::gLineBreak;
using ViewConst::DirectoryExists;

namespace {

/// What a marker left: the folder itself, or one that it lies in.
bool IsNoName(const std::string& name) {
  return name.empty() || name == "." || name == "..";
}

/// False when `folder` stays. Whoever is at work in it gets time first.
bool RemovePatchFolder(const std::string& folder) {
  const std::int64_t end = Machine::Current().Ticks() + std::int64_t{ViewConst::kVanishLimit} * 60;
  do {
    ViewConst::Sleep(2);
    ViewConst::AllUsersFullAccess(folder);
    ViewConst::DeleteFolderOrApp(folder);
    Machine::Current().Yield();
  } while (DirectoryExists(folder) && Machine::Current().Ticks() < end && !Machine::Current().Ending());
  return !DirectoryExists(folder);
}

/// Brings a file or a link to its place, or takes away what stands there: a folder for a folder's marker
/// only, or one that holds nothing.
bool ApplyItem(const FolderItem& item, bool isFolder, bool deletes, const std::string& target) {
  const FolderItem folder = FolderItem(target).Parent();
  const ViewConst::OpenedFolder opened(folder);
  if (!deletes) {
    if (!folder.Exists()) ViewConst::ForceDirectories(folder.NativePath(), false);
    return ViewConst::CopyFileB(item.NativePath(), target);
  }
  if (isFolder && DirectoryExists(target)) ViewConst::DeleteFolderOrApp(target);
  if (!isFolder) ViewConst::DeleteFile(target);
  const FolderItem left(target);
  return !left.Exists() || (left.Directory() && !left.Alias()) != isFolder;
}

}  // namespace

void TessarineStubWindow::ApplyInstallationPatch() {
  if (!DirectoryExists(fTargetFolder)) {
    MessageBox("Patch Not Found" + gLineBreak + gLineBreak +
               "Patch folder not created at specified location.");
    return;
  }
  ViewConst::SetInvisible(fTargetFolder);
  const std::optional<FolderItem> folder = GlobalsKv::MyGetFolderItem(fTargetFolder);
  if (!folder) return;
  ApplyPatchFolder(*folder, "",
                   fTargetFolder.substr(0, fTargetFolder.size() - std::string_view(kPatchSuffix).size()));
  if (!RemovePatchFolder(fTargetFolder))
    MessageBox("Unable to delete the patch folder." + gLineBreak + gLineBreak + fTargetFolder);
}

void TessarineStubWindow::ApplyPatchFolder(const FolderItem& folder, const std::string& relativePath,
                                           const std::string& baseFolder) {
  const std::string place = relativePath.empty() ? baseFolder : baseFolder + "/" + relativePath;
  // Links that stand in the installation may lead about in it, but not out of it.
  const bool inside = LiesIn(FolderItem(place).ResolvedPath(), FolderItem(baseFolder).ResolvedPath());
  const std::optional<std::vector<FolderItem>> items = folder.List();
  if (!items) MessageBox("Patch Failed: " + place);
  for (const FolderItem& item : items.value_or(std::vector<FolderItem>())) {
    const auto [name, deletes] = ReadPatchName(item.Name());
    const std::string target = place + "/" + name;
    const bool isFolder = item.Directory() && !item.Alias();
    const bool taken = isFolder || (!name.starts_with('.') && item.Visible());
    if (isFolder && !deletes) {
      ApplyPatchFolder(item, relativePath.empty() ? name : relativePath + "/" + name, baseFolder);
    } else if (taken && (!inside || IsNoName(name) || !ApplyItem(item, isFolder, deletes, target))) {
      MessageBox("Patch Failed: " + target);
    }
    Machine::Current().Yield();
  }
}
