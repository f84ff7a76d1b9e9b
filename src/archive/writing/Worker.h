// SPDX-License-Identifier: MIT
// Writes files: what each thread of an expansion does.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include "archive/reading/Inflate.h"
#include "archive/reading/Outlet.h"
#include "archive/writing/Crossing.h"
#include "archive/writing/FileMaker.h"
#include "archive/writing/FolderCache.h"
#include "archive/writing/Jobs.h"

namespace archive {

/// What the workers of one expansion share.
struct Work {
  Work(const Plan& thePlan, const Source& theSource, int theRoot, unsigned workers)
      : plan(thePlan), source(theSource), root(theRoot), made(thePlan), jobs(thePlan, workers) {}

  /// Instead of a root: entries are read and compared, and nothing is written.
  static constexpr int kNowhere = -1;
  bool OnlyChecks() const { return root == kNowhere; }

  const Plan& plan;
  const Source& source;
  const int root;
  std::size_t descriptors = 16;  // that each may keep open
  MadeFolders made;
  Jobs jobs;
  std::atomic<std::uint64_t> written{0};
  std::atomic<std::uint64_t> beyond{0};  // what entries turned out to hold above their stated lengths
  std::atomic<bool> stop{false};

  /// Of a solid archive, whose jobs are its frames.
  std::atomic<std::size_t> nextFrame{0};
  CrossingHeaders crossingHeaders;
  CrossingFiles crossingFiles;

  /// Keeps the first failure and stops all workers.
  void Fail(Status status);
  Status Failure();

 private:
  std::mutex fMutex;
  Status fFailure;
};

class Worker {
 public:
  Worker(Work& work, unsigned number);
  /// Takes jobs until none is left or somebody failed.
  void Run();

 private:
  Status Do(const Job& job);
  Status WriteWhole(const Job& run);
  Status FailedRead(const Job& run, unsigned char* packed);
  Status WriteFile(NodeId node, Bytes packed);
  Status WriteStream(NodeId node, bool shared);
  Status AdmitBeyond(std::uint64_t bytes);

  Work& fWork;
  const unsigned fNumber;
  FileMaker fFiles;
  Inflater fInflater;
  std::unique_ptr<unsigned char[]> fRoom;  // the content from its start, what is packed at its end
  std::unique_ptr<unsigned char[]> fPiece;
};

}  // namespace archive
