// SPDX-License-Identifier: MIT
// What the user picked goes into the target folder; then the release notes and the address at the end.
#include "choices/ItemList.h"
#include "choices/ItemPlace.h"
#include "choices/MergeStaging.h"
#include "dialogs/NoteDialogs.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Archives.h"
#include "util/Files.h"
#include "util/OpenedFolder.h"
#include "util/Paths.h"
#include "util/Places.h"

namespace {

/// The file of a local item; whatever stands in front of its name is passed over.
std::string ArchivePath(const ListItem& item) {
  return ViewConst::ResourceFolder().Child(ViewConst::ExtractFileName(item.source)).NativePath();
}

/// By names and by the links that stand on the disk. None for what leads out of the target folder.
std::optional<ItemPlace> PlaceOf(const ListItem& item, const std::string& targetFolder,
                                 const std::string& suffix) {
  std::optional<ItemPlace> place = PlanItem(targetFolder, item.target, suffix, ViewConst::DirectoryExists);
  if (!place) return std::nullopt;
  const std::string target = FolderItem(targetFolder).ResolvedPath();
  const std::string lands = FolderItem(place->FinalFolder()).ResolvedPath();
  const std::string beside = FolderItem(place->expansionFolder).Parent().ResolvedPath();
  // The staging folder of the target folder itself is the only one that stands outside.
  const bool inside = ViewConst::LiesIn(beside, target) || place->mergeFolder == targetFolder;
  return inside && ViewConst::LiesIn(lands, target) ? place : std::nullopt;
}

void TellOfFailedMove(const std::string& path) {
  MessageBox("Failed to create " + path);
}

}  // namespace

void TessarineStubWindow::ExpandChoiceAndOptions(const std::string& choice, const std::string& options) {
  if (fTargetFolder.empty()) return;
  if (!choice.empty() || !options.empty()) {
    MyProcessToTop();
    ShowMessage(CustomLabel("Please Wait", LabelText(21)));
  }
  if (!choice.empty() && !InstallChoice(choice)) MessageBox("Install failed for selected choice");
  if (!options.empty()) {
    for (const ListItem& item : SelectedItems(ParseItems(fInstallOptions), options))
      if (!InstallOption(item)) MessageBox("Install failed for option " + item.name);
  }
  ShowReleaseNotes();
  if (!fCompletionURL.empty() && !Application::Quitting()) Machine::Current().ShowURL(fCompletionURL);
}

bool TessarineStubWindow::InstallChoice(const std::string& choice) {
  const std::optional<ListItem> item = ChosenItem(ParseItems(fInstallChoices), choice);
  const std::optional<ItemPlace> place = item ? PlaceOf(*item, fTargetFolder, kChoiceSuffix) : std::nullopt;
  if (!place) return false;
  const ViewConst::OpenedFolder opened(FolderItem(place->expansionFolder).Parent());
  if (!ViewConst::ZipFileToFolder(ArchivePath(*item), place->expansionFolder, true)) return false;
  if (place->Staged()) MergeStaging(*place, TellOfFailedMove);
  return true;
}

bool TessarineStubWindow::InstallOption(const ListItem& item) {
  const std::optional<ItemPlace> place = PlaceOf(item, fTargetFolder, kOptionSuffix);
  if (!place) return false;
  const ViewConst::OpenedFolder opened(FolderItem(place->expansionFolder).Parent());
  const bool expanded = IsWebSource(item.source)
                            ? DownloadOption(item, *place)
                            : ViewConst::ZipFileToFolder(ArchivePath(item), place->expansionFolder, true);
  if (expanded && place->Staged()) MergeStaging(*place, TellOfFailedMove);
  return expanded;
}

bool TessarineStubWindow::DownloadOption(const ListItem& item, const ItemPlace& place) {
  ShowMessage(CustomLabel("Installing Options", LabelText(22)) + " " + item.name);
  const bool expanded = DownloadURL(item.source, ViewConst::ExtractFileName(item.source),
                                    place.expansionFolder, place.Staged());
  ShowMessage(CustomLabel("Please Wait", LabelText(21)));
  return expanded;
}

void TessarineStubWindow::ShowReleaseNotes() {
  if (fPostInstallNotes.empty()) return;
  MyProcessToTop();
  const std::string ok = CustomLabel("OK", LabelText(4));
  // Nothing is asked: the answer is of no interest.
  static_cast<void>(AskByNote({.text = fPostInstallNotes,
                               .title = CustomLabel("Release Notes", LabelText(26)),
                               .htmlCaption = ok,
                               .plainCaption = ok,
                               .canDecline = false}));
}

void TessarineStubWindow::ShowMessage(const std::string& text) {
  MessageLabel.SetText(text);
  MessageLabel.Refresh();
  Refresh();
}
