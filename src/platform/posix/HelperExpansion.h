// SPDX-License-Identifier: MIT
// A run of the expansion helper, and the reports that it writes to its standard output.
#pragma once

#include <string>
#include <vector>

#include "platform/Machine.h"
#include "platform/posix/Process.h"

/// Reports are lines: "items NUMBER", "largest BYTES", "total BYTES", "written BYTES", "done". Anything else
/// is passed over.
class HelperExpansion : public Expansion {
 public:
  /// Starts the program at the path `helper`; see StartPiped. One that can't be started counts as one that
  /// failed.
  HelperExpansion(const std::string& helper, const std::vector<std::string>& arguments, int input = -1,
                  int folder = -1);
  /// A helper that still runs ends, and leaves nothing.
  ~HelperExpansion() override;
  /// All that run, for a process that ends before its objects do.
  static void StopAll();
  HelperExpansion(const HelperExpansion&) = delete;
  HelperExpansion& operator=(const HelperExpansion&) = delete;

  bool Running() override;
  double Done() const override { return fDone; }
  bool Succeeded() const override { return fSucceeded; }
  std::string Reason() const override;
  void Stop() override;
  /// As reported; 0 before.
  std::uint64_t Total() const { return fTotal; }      // bytes of the work
  std::uint64_t Items() const { return fItems; }      // files and folders
  std::uint64_t Largest() const { return fLargest; }  // bytes of the largest file

 private:
  void TakeReport(const std::string& line);

  PipedProcess fProcess;
  bool fStarted;
  std::string fPartialLine;
  std::string fComplaint;
  std::uint64_t fTotal = 0;
  std::uint64_t fItems = 0;
  std::uint64_t fLargest = 0;
  double fDone = 0;
  bool fSucceeded = false;
};
