// SPDX-License-Identifier: MIT
// The machine of a case: its clock runs only while somebody waits, its folders lie in the case's tree,
// and what would leave the program is written down instead.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <optional>

#include "platform/posix/PosixMachine.h"
#include "support/TemporaryTree.h"

/// The current machine as long as it lives.
class TestMachine : public PosixMachine {
 public:
  explicit TestMachine(const TemporaryTree& tree);
  ~TestMachine() override { Machine::Install(nullptr); }

  /// How an archive's expansion goes. It does its work in the folder that it is given,
  /// when it ends, or at once when nobody can watch.
  struct Archive {
    bool watched = true;
    bool succeeds = true;
    std::string reason{};
    std::function<void(const FolderItem& folder)> work;
  };

  Archive fArchive;
  std::function<bool()> fEnding;  // is the run to end?
  std::function<void()> fPump;    // what the toolkit does in a wait
  std::string fExecutable;
  std::optional<std::pair<std::int64_t, std::int64_t>> fVersion;
  std::int64_t fMilliseconds = 0;       // the clock
  int fTimerSpeed = 50;                 // of timers, as a multiple of a real one's
  std::optional<std::int64_t> fMemory;  // installed, in units of 1,000,000 bytes; the real one without
  int fBeeps = 0;
  std::vector<std::string> fAddresses;
  std::vector<std::string> fLaunched;
  std::vector<std::string> fExpanded;  // packages' archives, their bytes as they lay
  ArchiveLook fLook{.accepted = true};
  std::string fInUse;                                       // a folder that a program uses
  std::string fHelpers;                                     // their folder, for cases with real ones
  std::string fDisc;                                        // a folder that counts as a disc
  std::function<std::string(std::int64_t ticks)> fProgram;  // what a program has on the clipboard by then,
                                                            // once one is launched
  std::optional<std::int64_t> fProgramEnds;                 // in ticks
  std::function<void(const std::string& what)> fNote;       // hears of what the run asks of the machine
  bool fExecuting = false;                                  // a real program is at work

  std::int64_t Ticks() override { return fMilliseconds * 60 / 1000; }
  void DoEvents(int milliseconds) override;
  bool Ending() override { return fEnding && fEnding(); }
  void Yield() override {
    if (fPump) fPump();
  }
  int TimerPeriod(int milliseconds) override { return milliseconds / fTimerSpeed; }
  std::string ExecutableFile() override { return fExecutable; }
  std::string HomeFolder() override { return fTree.Path("home"); }
  std::string DesktopFolder() override { return fTree.Path("home/Desktop"); }
  std::string TemporaryFolder() override { return fTree.Path("temporary"); }
  /// Its "Applications" is there.
  std::string SystemParentFolder() override { return fTree.Path(); }
  std::string SharedFolder() override { return fTree.Path("shared"); }
  std::string ClipboardText() override {
    const bool spoken = fProgram && !fLaunched.empty();
    const std::string text = spoken ? fProgram(Ticks()) : PosixMachine::ClipboardText();
    Note("reads \"" + text + "\" from the clipboard");
    return text;
  }
  void SetClipboardText(const std::string& text) override {
    Note("puts \"" + text + "\" on the clipboard");
    PosixMachine::SetClipboardText(text);
  }
  int Execute(const std::string& command) override {
    Note("runs " + command);
    const std::int64_t before = fMilliseconds;
    fExecuting = true;
    const int code = PosixMachine::Execute(command);
    fExecuting = false;
    fMilliseconds = before;  // a real program's time isn't the clock's
    return code;
  }
  bool InstalledMemory(std::int64_t& megabytes) override;
  bool SystemVersion(std::int64_t& major, std::int64_t& minor) override;
  void Beep() override { ++fBeeps; }
  void ShowURL(const std::string& address) override {
    Note("opens " + address);
    fAddresses.push_back(address);
  }
  ArchiveLook LookAtArchive(const FolderItem& archive, bool everyByte) override {
    Note("looks into the archive");
    return fHelpers.empty() ? fLook : PosixMachine::LookAtArchive(archive, everyByte);
  }
  bool IsDisc(const FolderItem& folder) override { return folder.NativePath() == fDisc; }
  bool Launch(const FolderItem& item) override;
  bool IsOpenBelow(const FolderItem& folder) override { return folder.NativePath() == fInUse; }
  bool LaunchedRuns() override { return !fProgramEnds || Ticks() < *fProgramEnds; }
  void ExpandPackage(const FolderItem& archive, const FolderItem& folder) override;
  std::shared_ptr<Expansion> ExpansionOf(const FolderItem& archive) override {
    return fHelpers.empty() ? fExpansion : PosixMachine::ExpansionOf(archive);
  }

 protected:
  std::string HelperFolder() override { return fHelpers.empty() ? PosixMachine::HelperFolder() : fHelpers; }
  bool OpenDocument(const FolderItem& /*item*/) override { return false; }

 private:
  void Note(const std::string& what) const {
    if (fNote) fNote(what);
  }

  const TemporaryTree& fTree;
  std::shared_ptr<Expansion> fExpansion;
};

/// Root is refused nothing. As this user, who gets the folder, the mode of a file counts.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(const std::string& folder) {
    if (::getuid() == 0)
      static_cast<void>(::chown(folder.c_str(), 65534, 65534) + ::setresuid(65534, 65534, 0));
  }
  ~OrdinaryUser() { static_cast<void>(::setresuid(0, 0, 0)); }
};

/// A machine and its tree for each case.
class MachineTest : public ::testing::Test {
 protected:
  using Contents = TemporaryTree::Contents;
  TemporaryTree fTree;
  TestMachine fMachine{fTree};
};
