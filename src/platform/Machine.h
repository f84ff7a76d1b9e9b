// SPDX-License-Identifier: MIT
// What the installer asks of the machine it runs on, besides files and windows. One object, installed
// at start; a test installs its own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/FolderItem.h"
#include "platform/Secret.h"

/// An archive that a process of its own expands and reports on.
class Expansion {
 public:
  virtual ~Expansion() = default;
  /// Takes in what has been reported since the last call. False once the process has ended.
  virtual bool Running() = 0;
  /// The part of the work done, from 0 to 1, as of the last Running().
  virtual double Done() const = 0;
  /// Meaningful once Running() is false.
  virtual bool Succeeded() const = 0;
  /// Of a failure: one sentence; empty where it isn't known.
  virtual std::string Reason() const = 0;
  /// Ends the process now, as a failure that leaves nothing.
  virtual void Stop() = 0;
};

/// What is known of an archive before it is expanded.
struct ArchiveLook {
  bool accepted = false;
  std::string reason{};     // why not, in one sentence
  std::uint64_t bytes = 0;  // of what it holds, unpacked
  std::uint64_t items = 0;  // files and folders
};

class Machine {
 public:
  virtual ~Machine() = default;

  /// Monotonic, in 1/60 second, from an arbitrary start.
  virtual std::int64_t Ticks() = 0;
  /// Lets windows repaint and the window manager be answered for about `milliseconds`. User input
  /// that arrives meanwhile is dropped: no second action starts.
  virtual void DoEvents(int milliseconds) = 0;
  /// DoEvents for loops that do real work: costs nothing when called often.
  virtual void Yield() = 0;
  /// True once the run is to end, whatever it is at: waits are over then.
  virtual bool Ending() { return false; }
  /// How long a timer of so many milliseconds really runs: a test's clock goes faster.
  virtual int TimerPeriod(int milliseconds) { return milliseconds; }

  /// The running program's file, links resolved.
  virtual std::string ExecutableFile() = 0;
  virtual std::string HomeFolder() = 0;
  virtual std::string DesktopFolder() = 0;
  /// A folder of this user's alone.
  virtual std::string TemporaryFolder() = 0;
  /// The folder whose "System" the system is in: the parent of the Applications folder.
  virtual std::string SystemParentFolder() = 0;
  /// The name of volume 0, the start-up volume.
  virtual std::string StartupVolumeName() = 0;
  /// The folder that all users share.
  virtual std::string SharedFolder() = 0;
  /// Installed memory in units of 1,000,000 bytes. False when the system doesn't say.
  virtual bool InstalledMemory(std::int64_t& megabytes) = 0;
  /// The system's version: first and second number. False when the system doesn't say.
  virtual bool SystemVersion(std::int64_t& major, std::int64_t& minor) = 0;

  /// The text that programs hand to each other by copying; empty where there is none.
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
  /// To be called before the process ends: has a text that this process put on the clipboard stay there.
  virtual void LeaveClipboard() = 0;

  /// Sounds the system's alert.
  virtual void Beep() = 0;
  /// Opens an address in the user's browser.
  virtual void ShowURL(const std::string& address) = 0;
  /// Runs one line of the command shell to its end, output discarded. The exit code.
  virtual int Execute(const std::string& command) = 0;
  /// Runs a program, found by the search path, with `arguments` as they are and `input` on its standard
  /// input. Waits for its end; output is discarded. The exit code.
  virtual int ExecuteWithInput(const std::string& program, const std::vector<std::string>& arguments,
                               const Secret& input) = 0;
  /// From now on the system writes no image of this process's memory to the disk when it crashes.
  virtual void ForbidCoreDumps() = 0;
  /// Does a process run a program that lies below `folder`?
  virtual bool IsRunBelow(const FolderItem& folder) = 0;
  /// Does one of this user's processes run such a program, or have a file open there?
  virtual bool IsOpenBelow(const FolderItem& folder) = 0;
  /// Is the folder on a disc, such as a CD or DVD?
  virtual bool IsDisc(const FolderItem& folder) = 0;
  /// Opens an item as the desktop would: an application bundle or program runs on its own, an
  /// archive goes to the expansion helper, a document to the program that the user chose for it.
  /// Returns at once; false when nothing could be started.
  virtual bool Launch(const FolderItem& item) = 0;
  /// Does anything still run that Launch has started since ForgetLaunched? A program that is there once only
  /// lives on in its first process. True also where that can't be known: of a document, which another program
  /// opens.
  virtual bool LaunchedRuns() = 0;
  virtual void ForgetLaunched() = 0;
  /// Starts to expand an archive as a package stores it, scrambled, where it lies, into `folder`: an empty
  /// one of this run's own, which goes if that fails. See ExpansionOf.
  virtual void ExpandPackage(const FolderItem& archive, const FolderItem& folder) = 0;
  /// The expansion that ExpandPackage started for this archive; none when its handler can't be watched.
  virtual std::shared_ptr<Expansion> ExpansionOf(const FolderItem& archive) = 0;

  /// Judges an archive as a package stores it, scrambled, where it lies: its structure, or with `everyByte`
  /// all of its content. Nothing is written.
  virtual ArchiveLook LookAtArchive(const FolderItem& archive, bool everyByte) = 0;

  static Machine& Current();
  /// Makes `machine` the current one; the caller keeps it alive as long as it is.
  static void Install(Machine* machine);
};
