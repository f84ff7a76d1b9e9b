// SPDX-License-Identifier: MIT
// What the user picked goes into the target folder; then the release notes and the address at the end.
#include "choices/ItemList.h"
#include "choices/ItemPlace.h"
#include "choices/MergeStaging.h"
#include "dialogs/NoteDialogs.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "platform/PrivateFolder.h"
#include "session/TessarineStubWindow.h"
#include "util/Archives.h"
#include "util/Files.h"
#include "util/OpenedFolder.h"
#include "util/Paths.h"

namespace {

/// The file of a local item; whatever stands in front of its name is passed over.
std::string ArchivePath(const ListItem& item) {
  return ViewConst::ResourceFolder().Child(ViewConst::ExtractFileName(item.source)).NativePath();
}

/// By names and by the links that stand on the disk. None for what leads out of the target folder, nor where
/// that one isn't: half of a software is none.
std::optional<ItemPlace> PlaceOf(const ListItem& item, const std::string& targetFolder,
                                 const std::string& suffix) {
  std::optional<ItemPlace> place = PlanItem(targetFolder, item.target, suffix, ViewConst::DirectoryExists);
  if (!place || !ViewConst::DirectoryExists(targetFolder)) return std::nullopt;
  const std::string target = FolderItem(targetFolder).ResolvedPath();
  const std::string lands = FolderItem(place->FinalFolder()).ResolvedPath();
  const std::string beside = FolderItem(place->expansionFolder).Parent().ResolvedPath();
  // The staging folder of the target folder itself is the only one that stands outside.
  const bool inside = LiesIn(beside, target) || place->mergeFolder == targetFolder;
  return inside && LiesIn(lands, target) ? place : std::nullopt;
}

/// Makes what is missing of a path's folders. Those that are empty in the end go again.
class MadeFolders {
 public:
  explicit MadeFolders(const FolderItem& folder) {
    for (FolderItem missing = folder; !missing.Exists(); missing = missing.Parent()) fMade.push_back(missing);
    ViewConst::ForceDirectories(folder.NativePath(), false);
  }
  ~MadeFolders() {
    // Of no interest where it holds something by now.
    for (const FolderItem& folder : fMade) static_cast<void>(folder.Delete());
  }
  MadeFolders(const MadeFolders&) = delete;
  MadeFolders& operator=(const MadeFolders&) = delete;

 private:
  std::vector<FolderItem> fMade;  // the innermost first
};

void TellOfFailedMove(const std::string& path) {
  MessageBox("Failed to create " + path);
}

}  // namespace

void TessarineStubWindow::ExpandChoiceAndOptions(const std::string& choice, const std::string& options) {
  if (fTargetFolder.empty()) return;
  if (!choice.empty() || !options.empty()) {
    MyProcessToTop();
    ShowMessage(CustomLabel("Please Wait", LabelText(LabelId::PleaseWait)));
  }
  if (!choice.empty() && !InstallChoice(choice)) MessageBox("Install failed for selected choice");
  if (!options.empty()) {
    for (const ListItem& item : SelectedItems(ParseItems(fInstallOptions), options))
      if (!Application::Quitting() && !InstallOption(item))
        MessageBox("Install failed for option " + item.name);
  }
  ShowReleaseNotes();
  if (!fCompletionURL.empty() && !Application::Quitting()) Machine::Current().ShowURL(fCompletionURL);
}

bool TessarineStubWindow::InstallChoice(const std::string& choice) {
  const std::optional<ListItem> item = ChosenItem(ParseItems(fInstallChoices), choice);
  const std::optional<ItemPlace> place = item ? PlaceOf(*item, fTargetFolder, kChoiceSuffix) : std::nullopt;
  return place && InstallItem(*place, [&item](const std::string& folder) {
           return ViewConst::ZipFileToFolder(ArchivePath(*item), folder, true);
         });
}

bool TessarineStubWindow::InstallOption(const ListItem& item) {
  const std::optional<ItemPlace> place = PlaceOf(item, fTargetFolder, kOptionSuffix);
  return place && InstallItem(*place, [this, &item, &place](const std::string& folder) {
           return IsWebSource(item.source) ? DownloadOption(item, folder, place->Staged())
                                           : ViewConst::ZipFileToFolder(ArchivePath(item), folder, true);
         });
}

/// What stands beside the place under whatever name is the user's: the archive of a web option and what it is
/// expanded into lie in a hidden folder there.
bool TessarineStubWindow::InstallItem(const ItemPlace& place,
                                      const std::function<bool(const std::string& folder)>& expand) {
  const FolderItem expansion(place.expansionFolder);
  const MadeFolders made(expansion.Parent());
  const ViewConst::OpenedFolder opened(expansion.Parent());
  PrivateFolder::TidyUp(expansion.Parent());
  const std::optional<PrivateFolder> hidden = PrivateFolder::Make(expansion.Parent());
  if (!hidden) return false;
  const std::string folder = hidden->Item().Child(expansion.Name()).NativePath();
  if (!expand(folder)) return false;
  if (!place.Staged()) return !expansion.Exists() && ViewConst::RenameFile(folder, place.expansionFolder);
  MergeStaging({folder, place.mergeFolder}, TellOfFailedMove);
  return true;
}

bool TessarineStubWindow::DownloadOption(const ListItem& item, const std::string& folder, bool staged) {
  ShowMessage(CustomLabel("Installing Options", LabelText(LabelId::InstallingOptions)) + " " + item.name);
  const bool expanded = DownloadURL(item.source, ViewConst::ExtractFileName(item.source), folder, staged);
  ShowMessage(CustomLabel("Please Wait", LabelText(LabelId::PleaseWait)));
  return expanded;
}

void TessarineStubWindow::ShowReleaseNotes() {
  if (fPostInstallNotes.empty()) return;
  MyProcessToTop();
  const std::string ok = CustomLabel("OK", LabelText(LabelId::Ok));
  // Nothing is asked: the answer is of no interest.
  static_cast<void>(
      AskByNote({.text = fPostInstallNotes,
                 .title = CustomLabel("Release Notes", LabelText(LabelId::PostInstallNotesTitle)),
                 .htmlCaption = ok,
                 .plainCaption = ok,
                 .canDecline = false}));
}

void TessarineStubWindow::ShowMessage(const std::string& text) {
  MessageLabel.SetText(text);
  MessageLabel.Refresh();
  Refresh();
}
