// SPDX-License-Identifier: MIT
// A run of the expansion helper, and the reports that it writes to its standard output.
#pragma once

#include <memory>
#include <string>

#include "platform/Machine.h"
#include "platform/posix/Process.h"

/// Reports are lines: "total BYTES", "written BYTES", "done". Anything else is passed over.
class HelperExpansion : public Expansion {
 public:
  /// Expands `archive` into the folder that holds it, replacing nothing there. `helper` is the
  /// program's path. A helper that can't be started counts as one that failed.
  HelperExpansion(const std::string& helper, const FolderItem& archive);
  /// A helper that still runs goes on by itself.
  ~HelperExpansion() override;
  HelperExpansion(const HelperExpansion&) = delete;
  HelperExpansion& operator=(const HelperExpansion&) = delete;

  bool Running() override;
  double Done() const override { return fDone; }
  bool Succeeded() const override { return fSucceeded; }

 private:
  void TakeReport(const std::string& line);

  PipedProcess fProcess;
  std::string fPartialLine;
  std::string fComplaint;
  double fTotal = 0;
  double fDone = 0;
  bool fSucceeded = false;
};
