// SPDX-License-Identifier: MIT
// The parts of the machine that need no toolkit.
#pragma once

#include <map>
#include <vector>

#include "platform/Machine.h"

class PosixMachine : public Machine {
 public:
  PosixMachine() = default;
  ~PosixMachine() override;
  PosixMachine(const PosixMachine&) = delete;
  PosixMachine& operator=(const PosixMachine&) = delete;

  std::int64_t Ticks() override;
  std::string ExecutableFile() override;
  std::string HomeFolder() override;
  std::string DesktopFolder() override;
  std::string TemporaryFolder() override;
  /// Its "Applications" is made when first asked for. If nothing has come into it by the end of the run, it
  /// goes again.
  std::string SystemParentFolder() override;
  std::string StartupVolumeName() override { return "System"; }
  std::string SharedFolder() override { return "/Users/Shared"; }
  bool InstalledMemory(std::int64_t& megabytes) override;
  bool SystemVersion(std::int64_t& major, std::int64_t& minor) override;
  /// Without a desktop the text stays in this process.
  std::string ClipboardText() override { return fClipboard; }
  void SetClipboardText(const std::string& text) override { fClipboard = text; }
  void LeaveClipboard() override {}
  /// Silent without a desktop.
  void Beep() override {}
  int Execute(const std::string& command) override;
  int ExecuteWithInput(const std::string& program, const std::vector<std::string>& arguments,
                       const Secret& input) override;
  void ForbidCoreDumps() override;
  bool IsRunBelow(const FolderItem& folder) override;
  bool IsOpenBelow(const FolderItem& folder) override;
  bool IsDisc(const FolderItem& folder) override;
  bool Launch(const FolderItem& item) override;
  bool LaunchedRuns() override;
  void ForgetLaunched() override;
  std::shared_ptr<Expansion> ExpansionOf(const FolderItem& archive) override;
  void ExpandPackage(const FolderItem& archive, const FolderItem& folder) override;
  ArchiveLook LookAtArchive(const FolderItem& archive, bool everyByte) override;

 protected:
  /// Opens a document or folder with the desktop's choice of program.
  virtual bool OpenDocument(const FolderItem& item) = 0;
  /// The folder of the programs that travel beside the runtime.
  virtual std::string HelperFolder();

 private:
  /// A short wait; false once it's in vain.
  bool GoOn();
  /// Was a program launched?
  bool Remember(int process);
  std::string Helper();
  static std::vector<std::string> HelperWords(const std::vector<std::string>& options,
                                              const std::string& archive, const std::string& folder);

  std::map<std::string, std::shared_ptr<Expansion>> fExpansions;  // by the archive's path
  std::vector<int> fLaunched;                                     // the processes that LaunchedRuns asks for
  bool fOpenedDocument = false;                                   // by a process that isn't known
  std::string fTemporaryFolder;
  std::string fMadeApplications;
  std::string fToolLink;
  std::string fClipboard;
};
