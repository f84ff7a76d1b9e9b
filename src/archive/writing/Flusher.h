// SPDX-License-Identifier: MIT
// Has the expanded data on disk before it is shown.
#pragma once

#include <sys/stat.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <thread>

#include "archive/Result.h"
#include "base/Descriptor.h"

namespace archive {

/// Flushes the file system of a folder by syncfs(2): in part while files are still being written, and wholly
/// at the end. To be made before the process shuts itself in.
class Flusher {
 public:
  explicit Flusher(bool wanted);
  ~Flusher();
  Flusher(const Flusher&) = delete;
  Flusher& operator=(const Flusher&) = delete;

  /// The folder whose file system is meant; one in memory has nothing to flush. Keeps a descriptor of its
  /// own.
  Status Attach(int folder);
  bool Enabled() const { return fEnabled; }
  /// Begins to write to disk, beside the caller, once enough has come together and a thread for it can be
  /// had. `written`: bytes so far.
  void Begin(std::uint64_t written);
  /// Returns once all is on disk. `tell` hears a few times a second which share is, from 0 to 1: by what
  /// the system counts as not yet written, of other programs too. It answers false to give up: then only
  /// what has been begun is waited for.
  Status Finish(const std::function<bool(double)>& tell);

 private:
  bool Start();
  void Join();
  /// Bytes that the system has still to write; 0 where it doesn't say.
  double Waiting() const;

  const bool fWanted;
  bool fEnabled = false;
  Descriptor fFolder;
  const Descriptor fMemoryFacts;  // /proc/meminfo
  std::thread fThread;
  std::atomic<bool> fBusy{false};
  int fError = 0;  // the first: the system tells each but once
  std::uint64_t fBegun = 0;
};

}  // namespace archive
