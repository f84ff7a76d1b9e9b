// SPDX-License-Identifier: MIT
// The Payload is expanded in a hidden folder beside its place, and takes it in one step once it is whole:
// until then an earlier installation stands there as it was.
#include "engine/Target.h"
#include "package/Scrambling.h"
#include "platform/Application.h"
#include "platform/Machine.h"
#include "platform/Normalization.h"
#include "platform/PrivateFolder.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/Paths.h"
#include "util/Strings.h"

namespace {

/// The folder that the archive has brought. Its name may differ from the expected one in case, or in how
/// letters with accents are written: other systems' archivers do that.
std::optional<FolderItem> MadeFolder(const FolderItem& place, const std::string& name) {
  if (place.Child(name).Directory() && !place.Child(name).Alias()) return place.Child(name);
  std::optional<FolderItem> found;
  for (const FolderItem& item : place.Children()) {
    if (item.Alias() || !item.Directory() ||
        !ViewConst::NonCaseMatch(ComposedForm(item.Name()), ComposedForm(name)))
      continue;
    if (found) return std::nullopt;
    found = item;
  }
  return found;
}

}  // namespace

bool TessarineStubWindow::InstallPayload(const Payload& payload) {
  ShowInstallinProgress();
  std::string reason;
  const bool installed = MakeRoom(payload, reason) && ExpandBeside(payload, reason);
  if (!installed && !Application::Quitting() && !fPatchMissing) ShowInstallationFailed(reason);
  return installed;
}

/// Knows before anything is written whether archive and content have room. Where they have it only without
/// the installation that is in the way, that one goes first, but not for an archive that may be damaged.
bool TessarineStubWindow::MakeRoom(const Payload& payload, std::string& reason) {
  const FolderItem archive(payload.path);
  std::uint64_t needed = archive.Length();
  if (!payload.split) {
    const ArchiveLook look = Machine::Current().LookAtArchive(archive, false);
    reason = look.reason;
    if (!look.accepted) return false;
    needed += look.bytes;
  }
  const FolderItem target(fTargetFolder);
  const std::uint64_t left = target.Parent().RoomLeft();
  if (needed <= left) return true;
  reason = "There is not enough room on the disk.";
  if (payload.split || !target.Exists() || needed > left + target.RoomTaken()) return false;
  const ArchiveLook look = Machine::Current().LookAtArchive(archive, true);
  if (!look.accepted) {
    reason = look.reason;
    return false;
  }
  ViewConst::DeleteFolderOrApp(fTargetFolder);
  return !target.Exists();
}

bool TessarineStubWindow::ExpandBeside(const Payload& payload, std::string& reason) {
  const FolderItem target(fTargetFolder);
  PrivateFolder::RemoveLeft(target.Parent());
  const std::optional<PrivateFolder> place = PrivateFolder::Make(target.Parent());
  if (!place) {
    reason = "No folder can be made beside " + fTargetFolder + ".";
    return false;
  }
  const FolderItem archive = place->Item().Child(payload.archiveName);
  const bool putDown = payload.split ? CombineSplitSetup(payload.path, archive.NativePath())
                                     : ViewConst::CopyFile(payload.path, archive.NativePath());
  if (!putDown) {
    reason = (payload.split ? "The pieces can't be joined in " : "The archive can't be copied to ") +
             target.Parent().NativePath() + ".";
    return false;
  }
  EncryptDecryptFileEnd(archive.NativePath(), false);
  archive.Launch(true);
  if (!ZipFileProcess(archive.NativePath(), archive)) {
    if (const std::shared_ptr<Expansion> expansion = Machine::Current().ExpansionOf(archive))
      reason = expansion->Reason();
    return false;
  }
  const std::optional<FolderItem> made = MadeFolder(place->Item(), target.Name());
  if (!made) {
    // A patch that isn't there is told by who looks for it.
    fPatchMissing = fInstallationPatch;
    reason = "The archive holds no folder named " + target.Name() + ".";
    return false;
  }
  if (made->MoveFileTo(target) == FolderItem::Moved::Yes) return true;
  reason = "The folder can't be put in its place: " + fTargetFolder + ".";
  return false;
}
