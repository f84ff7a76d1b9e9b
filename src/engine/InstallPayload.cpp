// SPDX-License-Identifier: MIT
// The Payload is expanded in a hidden folder beside its place, and takes it in one step once it is whole:
// until then an earlier installation stands there as it was.
#include "engine/Target.h"
#include "platform/Application.h"
#include "platform/Machine.h"
#include "platform/Normalization.h"
#include "platform/PrivateFolder.h"
#include "platform/UnnamedFile.h"
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

/// What is lacking shows also where it's less than a megabyte.
std::string TooLittle(std::uint64_t needed, std::uint64_t left) {
  constexpr std::uint64_t kMegabyte = 1'000'000;
  return "There is not enough room on the disk: " + std::to_string((needed + kMegabyte - 1) / kMegabyte) +
         " MB are needed, " + std::to_string(left / kMegabyte) + " MB are free.";
}

}  // namespace

bool TessarineStubWindow::InstallPayload(const Payload& payload) {
  ShowInstallinProgress();
  const FolderItem folder = FolderItem(fTargetFolder).Parent();
  std::string reason = "Another installation is at work in " + folder.NativePath() + ".";
  std::optional<FolderLock> lock = FolderLock::Share(folder);
  const bool installed = lock && MakeRoom(payload, *lock, reason) && ExpandBeside(payload, reason);
  if (!installed && !Application::Quitting() && !fPatchMissing) ShowInstallationFailed(reason);
  return installed;
}

/// Knows before anything is written whether the content has room. Where it has it only without the
/// installation that is in the way, that one goes first, but not for an archive that may be damaged, nor
/// while another run counts on the same room.
bool TessarineStubWindow::MakeRoom(const Payload& payload, FolderLock& lock, std::string& reason) {
  const FolderItem archive(payload.path);
  std::uint64_t needed = archive.Length();
  if (!payload.split) {
    const ArchiveLook look = Machine::Current().LookAtArchive(archive, false);
    reason = look.reason;
    if (!look.accepted) return false;
    needed = look.bytes;
  }
  const FolderItem target(fTargetFolder);
  const std::uint64_t left = target.Parent().RoomLeft();
  if (needed <= left) return true;
  reason = TooLittle(needed, left);
  if (payload.split || !target.Exists() || needed > left + target.RoomTaken()) return false;
  const ArchiveLook look = Machine::Current().LookAtArchive(archive, true);
  if (!look.accepted) {
    reason = look.reason;
    return false;
  }
  if (!lock.MakeExclusive()) {
    reason = "Another installation is at work in " + target.Parent().NativePath() + ".";
    return false;
  }
  ViewConst::DeleteFolderOrApp(fTargetFolder);
  reason = "The existing folder can't be deleted: " + fTargetFolder + ".";
  return !target.Exists();
}

bool TessarineStubWindow::ExpandBeside(const Payload& payload, std::string& reason) {
  const FolderItem target(fTargetFolder);
  const std::optional<PrivateFolder> place = PrivateFolder::Make(target.Parent());
  if (!place) {
    reason = "No folder can be made beside " + fTargetFolder + ".";
    return false;
  }
  FolderItem archive(payload.path);
  std::optional<UnnamedFile> joined;
  if (payload.split) {
    joined = UnnamedFile::Make(place->Item());
    if (!joined || !CombineSplitSetup(payload.path, joined->Item().NativePath())) {
      reason = "The pieces can't be joined in " + target.Parent().NativePath() + ".";
      return false;
    }
    archive = joined->Item();
  }
  Machine::Current().ExpandPackage(archive, place->Item());
  if (!ZipFileProcess(archive.NativePath(), archive)) {
    if (const std::shared_ptr<Expansion> expansion = Machine::Current().ExpansionOf(archive))
      reason = expansion->Reason();
    return false;
  }
  return !Application::Quitting() && TakePlace(*place, reason);
}

bool TessarineStubWindow::TakePlace(const PrivateFolder& place, std::string& reason) {
  const FolderItem target(fTargetFolder);
  const std::optional<FolderItem> made = MadeFolder(place.Item(), target.Name());
  if (!made) {
    // A patch that isn't there is told by who looks for it.
    fPatchMissing = fInstallationPatch;
    reason = "The archive holds no folder named " + target.Name() + ".";
    return false;
  }
  // The chosen folder may have been moved meanwhile, and another one put in its place.
  if (place.InPlace() && made->MoveFileTo(target) == FolderItem::Moved::Yes) return true;
  reason = "The folder can't be put in its place: " + fTargetFolder + ".";
  return false;
}
