// SPDX-License-Identifier: MIT
// Deals the files of a plan out to the workers.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "archive/planning/Plan.h"

namespace archive {

/// One file, or a run of small neighbours that is read in one piece.
struct Job {
  /// Streamed: what the worker can't or needn't hold at once. Shared: streamed by two threads, because it is
  /// so much of the whole that one alone would be late.
  enum class Way { Whole, Streamed, Shared };

  std::size_t first = 0;  // in Plan::files
  std::size_t count = 0;
  std::uint64_t bytes = 0;  // of content
  Way way = Way::Whole;
};

class Jobs {
 public:
  Jobs(const Plan& plan, unsigned workers);

  /// The bytes that a worker needs to hold a job, packed and unpacked.
  std::size_t Room() const { return fRoom; }

  /// The largest file that is left, then a run from the worker's own part of the archive, then one from a
  /// part that another worker didn't get to. Workers in different parts rarely meet in a folder, where the
  /// file system would make one wait for the other.
  const Job* Next(unsigned worker);

 private:
  struct Part {
    std::size_t begin = 0, end = 0;
    std::atomic<std::size_t> next{0};
  };
  std::vector<Job> fLarge, fRuns;
  std::atomic<std::size_t> fNextLarge{0};
  std::vector<std::unique_ptr<Part>> fParts;
  std::size_t fRoom;
};

}  // namespace archive
