// SPDX-License-Identifier: MIT
// Deals the files of a plan out to the workers.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/archive/Plan.h"

namespace archive {

/// A run of small neighbours that is read in one piece, or one large file.
struct Job {
  std::size_t first = 0;  // in Plan::files
  std::size_t count = 0;
  std::uint64_t bytes = 0;
  bool large = false;
};

/// Most packed bytes of a run, gaps included.
constexpr std::uint64_t kLongestRun = std::uint64_t{1} << 20;

class Jobs {
 public:
  Jobs(const Plan& plan, unsigned workers);

  /// The largest file that is left, then a run from the worker's own part of the archive, then one from a
  /// part that another worker didn't get to. Workers in different parts rarely meet in a folder, where the
  /// file system would make one wait for the other.
  const Job* Next(unsigned worker);

  /// Whether a large file is so much of the whole that it should be shared between two threads.
  bool WorthTwoThreads(const Job& job) const { return job.bytes * fParts.size() > fBytes; }

 private:
  struct Part {
    std::size_t begin = 0, end = 0;
    std::atomic<std::size_t> next{0};
  };
  std::vector<Job> fLarge, fRuns;
  std::atomic<std::size_t> fNextLarge{0};
  std::vector<std::unique_ptr<Part>> fParts;
  std::uint64_t fBytes = 0;
};

}  // namespace archive
