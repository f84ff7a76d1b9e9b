// SPDX-License-Identifier: MIT
// The installer's one main window, and the table of contents of an install: its controls, the record
// that it inherits, and its operations, grouped by the file that holds their bodies.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "package/InstallerRecord.h"
#include "platform/Controls.h"
#include "platform/FolderItem.h"
#include "platform/FolderLock.h"
#include "platform/Window.h"

class PrivateFolder;
struct ArchiveLook;
struct ItemPlace;
struct ListItem;
struct Payload;
struct Target;

class TessarineStubWindow : public Window, public InstallerRecord {
 public:
  TessarineStubWindow();

  PushButton QuitBtn{*this, "QuitBtn", {204, 198, 80, 20}, "Quit"};
  PushButton InstallBtn{*this, "InstallBtn", {296, 198, 80, 20}, "Install", PushButton::Default};
  Label MessageLabel{*this, "MessageLabel", {96, 14, 204, 77}, "", Label::MultiLine};
  ProgressBar ProgressBar1{*this, "ProgressBar1", {37, 198, 155, 20}, 100};
  Label URLLabel{*this, "URLLabel", {20, 104, 356, 20}, "URL", Label::Link};
  Canvas PictureCanvas{*this, "PictureCanvas", {20, 12, 64, 64}};
  Canvas LogoCanvas{*this, "LogoCanvas", {312, 12, 64, 64}};
  Label CopyrightLabel{*this, "CopyrightLabel", {20, 226, 356, 12}, "", Label::Small};
  PushButton InfoBtn{*this, "InfoBtn", {20, 198, 80, 20}, "Info"};

  // session/TessarineStubWindow.cpp: the window's events
  void Event_Open();
  void Event_Close() override;
  void QuitBtn_Action();
  void InstallBtn_Action();
  void InfoBtn_Action();
  bool URLLabel_MouseDown();

  // session/DoStartup.cpp
  void DoStartup();
  /// Brings the program to the front. It can't fail from the caller's point of view.
  void MyProcessToTop() { ToFront(); }

  // session/CheckRequirements.cpp
  /// False after a message for each requirement of the package that the machine doesn't meet.
  bool CheckMinOSorRAM();
  /// False, after a message, for a user who may not create a file in the Applications folder.
  bool CheckAdminAccount();

  // session/RelocateInstaller.cpp
  /// Does this installer run from below the temporary folder?
  bool RunningRelocatedInstaller();
  /// For a split set outside the temporary folder: starts a copy there, which takes over. False when this run
  /// goes on by itself. A copy that couldn't be started has been told.
  bool RelocateInstaller(const std::string& firstPiecePath);

  // session/InstallWalk.cpp
  void OKBtnClicked();
  /// Behind notes and agreement: what the user picks, the installation, what was picked, the cleanup.
  void InstallAll();
  void InfoBtnClicked();
  void ShowInstallinProgress();

  // session/ReadData.cpp
  /// True when the package's Data record was there and all fields are set.
  bool ReadData();
  std::string ReadPlainOrHtmlText(const std::string& text);

  // session/Labels.cpp
  /// `override` unless it is empty.
  static std::string CustomLabel(const std::string& defaultText, const std::string& override);

  // engine/ExpandFolder.cpp
  /// From the package to the installed folder. Tells the user itself what went wrong;
  /// fTargetFolder holds the target's path afterwards, or nothing when the user chose none.
  void ExpandFolder();

  // engine/SelectTargetFolder.cpp
  /// A folder's path without closing "/", or empty after a message or a cancel; a cancel gives
  /// `path` unless `cancelGivesEmpty`.
  std::string SelectTargetFolder(const std::string& path, bool cancelGivesEmpty);

  // engine/ZipFileProcess.cpp
  /// Waits for the archive's expansion, or as long as it should need where it can't be watched. False only
  /// when the expansion was watched and has failed.
  bool ZipFileProcess(const std::string& path, const FolderItem& file);

  // engine/ZipFileDelete.cpp
  /// Launches `file`, if any, and removes what bears the archive's path, a folder excepted.
  void ZipFileDelete(const std::string& path, const std::optional<FolderItem>& file);

  // engine/CombineSplitSetup.cpp
  /// Joins the pieces of a split set in a new file. False, and nothing of it stays, when a piece can't be
  /// read or the file not be written; or when the user wants to change no more discs, which ends the run.
  [[nodiscard]] bool CombineSplitSetup(const std::string& firstPiecePath, const std::string& outputPath);
  bool SourceFolderIsCD(const std::string& path);
  void EjectCD();

  // engine/ApplyInstallationPatch.cpp
  /// Merges the patch folder fTargetFolder into the installation and removes it. Items that fail are told by
  /// name, and the rest goes on.
  void ApplyInstallationPatch();
  /// One level: `relativePath` of the patch folder, without closing "/"; empty at the root. `baseFolder` is
  /// the installation's path, without closing "/".
  void ApplyPatchFolder(const FolderItem& folder, const std::string& relativePath,
                        const std::string& baseFolder);

  // choices/SelectChoiceAndOptions.cpp
  /// The names of the choice and of the options, these separated by ",". False when the user backed out.
  bool SelectChoiceAndOptions(std::string& choice, std::string& options);

  // choices/ExpandChoiceAndOptions.cpp
  /// Puts the archives of what was picked into the target folder, past those that fail; then shows the
  /// release notes and opens the address at the end. Does nothing without a target folder.
  void ExpandChoiceAndOptions(const std::string& choice, const std::string& options);

  // choices/DownloadURL.cpp
  /// Fetches an archive and expands it into `folder`. Meanwhile it lies beside that folder, as `fileName`.
  /// False, mostly after a message, when it couldn't be fetched, put down or expanded.
  bool DownloadURL(const std::string& url, const std::string& fileName, const std::string& folder,
                   bool staged);

  // actions/PreInstallCopy.cpp, actions/PostInstallCopy.cpp: the action script
  void PreInstallCopy();
  void PostInstallCopy();

  // actions/ExternalPrograms.cpp
  /// Replaces a path with a specifier by a full one and tells the program to come, by the clipboard,
  /// where the installer is. False for a path without one.
  bool SpecialPath(std::string& path);
  /// False when the program refuses the install.
  bool DoExecuteBefore();
  /// Hears a program out that has just been launched. False when it aborts the install.
  bool CommunicateWithExecutable();

  // actions/ShellCommands.cpp
  void DoShellCmd(const std::string& command);
  void DoShellFile(const std::string& name);

  // actions/Cleanup.cpp
  void Cleanup();

 private:
  // session/DoStartup.cpp
  void GoOnAsCopy();
  void Dress();
  void DressPictures();

  // engine/ExpandFolder.cpp
  std::optional<Target> SettleTarget();
  bool PreparePatch();
  bool MayTakeThePlace();
  bool MayReplaceTarget();
  void StartAfterProgram(std::optional<FolderItem> program, const std::string& archive);
  void ShowInstallationFailed(const std::string& reason = "");

  // engine/InstallPayload.cpp
  /// From the archive in the package to the folder in its place. False, after a message, when it couldn't be
  /// done: what stood there still does, and nothing else is left. Or the user ended the run.
  bool InstallPayload(const Payload& payload);
  bool LookAndExpand(const Payload& payload, std::string& reason);
  bool MakeRoom(const FolderItem& archive, const ArchiveLook& look, std::string& reason);
  bool ExpandBeside(const FolderItem& archive, std::string& reason);
  bool TakePlace(const PrivateFolder& place, std::string& reason);

  // engine/CombineSplitSetup.cpp
  bool JoinPieces(const std::string& firstPiecePath, const FolderItem& output);
  bool AskForNextDisc();
  void EjectIfDisc(const std::string& folder);

  // choices/SelectChoiceAndOptions.cpp
  bool PickChoice(std::string& choice);
  bool PickOptions(std::string& options);

  // choices/ExpandChoiceAndOptions.cpp
  bool InstallChoice(const std::string& choice);
  bool InstallOption(const ListItem& item);
  bool InstallItem(const ItemPlace& place, const std::function<bool(const std::string& folder)>& expand);
  bool DownloadOption(const ListItem& item, const std::string& folder, bool staged);
  void ShowReleaseNotes();
  void ShowMessage(const std::string& text);

  std::optional<FolderLock> fCopyLock;  // of the copy that takes over
  std::string fDisc;                    // the folder whose disc is to come out
  std::string fStale;                   // the clipboard's text before a program was launched
  std::vector<std::string> fInstalled;  // what this run has put somewhere, or tried to
  bool fOldIsGone = false;              // nothing stands at the target until the new one does
  bool fPatchMissing = false;           // expanded, but the archive held no patch folder
  bool fDressed = false;                // the package's content is in the window
};
