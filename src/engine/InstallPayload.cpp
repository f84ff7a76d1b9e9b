// SPDX-License-Identifier: MIT
// The Payload is expanded in a hidden folder beside its place, and takes it in one step once it is whole:
// until then an earlier installation stands there as it was.
#include <algorithm>

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

/// Is there more at the top than the one folder? What other systems' archivers add for themselves doesn't
/// count.
bool HoldsMore(const FolderItem& place, const FolderItem& made) {
  const std::vector<FolderItem> items = place.Children();
  return std::any_of(items.begin(), items.end(), [&made](const FolderItem& item) {
    return item.NativePath() != made.NativePath() && item.Name() != "__MACOSX" && item.Name() != ".DS_Store";
  });
}

/// What is lacking shows also where it's less than a megabyte.
std::string TooLittle(std::uint64_t needed, std::uint64_t left) {
  constexpr std::uint64_t kMegabyte = 1'000'000;
  return "There is not enough room on the disk: " + std::to_string((needed + kMegabyte - 1) / kMegabyte) +
         " MB are needed, " + std::to_string(left / kMegabyte) + " MB are free.";
}

/// What the content takes, as far as that is known: a file of any size takes whole blocks.
FolderItem::Room RoomFor(const ArchiveLook& look) {
  constexpr std::uint64_t kHalfBlock = 2048;
  return {look.bytes + look.items * kHalfBlock, look.items};
}

bool Suffices(const FolderItem::Room& room, const FolderItem::Room& needed) {
  return needed.bytes <= room.bytes && needed.items <= room.items;
}

/// Runs that expand into one folder count on the same room. Where it's scarce, they take turns.
std::optional<FolderLock> AwaitTurn(const FolderItem& folder, const FolderItem::Room& needed) {
  constexpr std::int64_t kMostTicks = 60 * 60;
  constexpr int kLook = 100;          // milliseconds
  constexpr std::uint64_t kMany = 3;  // runs at once
  Machine& machine = Machine::Current();
  const std::int64_t end = machine.Ticks() + kMostTicks;
  while (!machine.Ending()) {
    std::optional<FolderLock> lock = FolderLock::Share(folder);
    const FolderItem::Room left = folder.RoomLeft();
    if (lock && (Suffices({left.bytes / kMany, left.items / kMany}, needed) || lock->MakeExclusive()))
      return lock;
    if (machine.Ticks() >= end) break;
    machine.DoEvents(kLook);
  }
  return std::nullopt;
}

}  // namespace

bool TessarineStubWindow::InstallPayload(const Payload& payload) {
  ShowInstallinProgress();
  std::string reason;
  const bool installed = LookAndExpand(payload, reason);
  if (!installed && !Application::Quitting() && !fPatchMissing) ShowInstallationFailed(reason);
  return installed;
}

/// All that can be known is known before anything is touched.
bool TessarineStubWindow::LookAndExpand(const Payload& payload, std::string& reason) {
  const FolderItem target(fTargetFolder);
  const FolderItem folder = target.Parent();
  if (target.Exists() && !target.Directory() && !target.Alias()) {
    reason = "A file stands in the place of the folder: " + fTargetFolder + ".";
    return false;
  }
  FolderItem archive(payload.path);
  std::optional<UnnamedFile> joined;
  if (payload.split) {
    joined = UnnamedFile::Make(folder);
    if (!joined || !CombineSplitSetup(payload.path, joined->Item().NativePath())) {
      reason = "The pieces can't be joined in " + folder.NativePath() + ".";
      return false;
    }
    archive = joined->Item();
  }
  const ArchiveLook look = Machine::Current().LookAtArchive(archive, false);
  reason = look.reason;
  if (!look.accepted || Application::Quitting()) return false;
  const std::optional<FolderLock> turn = AwaitTurn(folder, RoomFor(look));
  if (!turn) {
    reason = "Another installation is at work in " + folder.NativePath() + ".";
    return false;
  }
  if (Suffices(folder.RoomLeft(), RoomFor(look))) return ExpandBeside(archive, reason);
  return MakeRoom(archive, look, reason) && ExpandBeside(archive, reason);
}

/// The installation that is in the way goes first, but not for an archive that may be damaged, nor where that
/// gives no room. From then on the run can't be ended any more.
bool TessarineStubWindow::MakeRoom(const FolderItem& archive, const ArchiveLook& look, std::string& reason) {
  const FolderItem target(fTargetFolder);
  const FolderItem::Room left = target.Parent().RoomLeft();
  const FolderItem::Room taken = target.RoomTaken();
  const FolderItem::Room needed = RoomFor(look);
  reason = needed.bytes > left.bytes
               ? TooLittle(needed.bytes, left.bytes)
               : "The disk can't hold so many files: " + std::to_string(needed.items) + ".";
  if (!target.Exists() || !Suffices({left.bytes + taken.bytes, left.items + taken.items}, needed))
    return false;
  if (Machine::Current().IsOpenBelow(target)) {
    reason = "There is room for one only, and a program uses " + fTargetFolder + ".";
    return false;
  }
  const ArchiveLook whole = Machine::Current().LookAtArchive(archive, true);
  reason = whole.reason;
  if (!whole.accepted || Application::Quitting()) return false;
  fOldIsGone = true;
  ViewConst::DeleteFolderOrApp(fTargetFolder);
  reason = "The existing folder can't be deleted: " + fTargetFolder + ".";
  return !target.Exists();
}

bool TessarineStubWindow::ExpandBeside(const FolderItem& archive, std::string& reason) {
  const std::optional<PrivateFolder> place = PrivateFolder::Make(FolderItem(fTargetFolder).Parent());
  if (!place) {
    reason = "No folder can be made beside " + fTargetFolder + ".";
    return false;
  }
  Machine::Current().ExpandPackage(archive, place->Item());
  if (!ZipFileProcess(archive.NativePath(), archive)) {
    if (const std::shared_ptr<Expansion> expansion = Machine::Current().ExpansionOf(archive))
      reason = expansion->Reason();
    return false;
  }
  return (fOldIsGone || !Application::Quitting()) && TakePlace(*place, reason);
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
  if (HoldsMore(place.Item(), *made)) {
    reason = "The archive holds more than the folder " + target.Name() + ".";
    return false;
  }
  // The chosen folder may have been moved meanwhile, and another one put in its place.
  if (place.InPlace() && made->MoveFileTo(target) == FolderItem::Moved::Yes) return true;
  reason = "The folder can't be put in its place: " + fTargetFolder + ".";
  return false;
}
