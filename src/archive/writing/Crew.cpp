// SPDX-License-Identifier: MIT
// Starts, watches and joins the workers.
#include "archive/writing/Crew.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

#include "archive/Wall.h"
#include "archive/reading/FrameSource.h"
#include "archive/writing/FrameWorker.h"

namespace archive {
namespace {

/// Folder descriptors for each worker: plenty, but never the process's last ones.
std::size_t DescriptorsEach(unsigned workers) {
  constexpr std::size_t kPlenty = 512, kOthers = 32;
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) limit.rlim_cur = 256;
  const std::size_t spare = limit.rlim_cur > kOthers ? static_cast<std::size_t>(limit.rlim_cur) - kOthers : 0;
  return std::clamp<std::size_t>(spare / 2 / workers, 2, kPlenty);
}

/// Counts the workers that are still at it.
class Muster {
 public:
  void Started() {
    const std::lock_guard lock(fMutex);
    ++fBusy;
  }
  void Finished() {
    const std::lock_guard lock(fMutex);
    --fBusy;
    fChanged.notify_all();
  }
  /// False once nobody is at work; waits a moment for that.
  bool StillBusy() {
    constexpr std::chrono::milliseconds kMoment(50);
    std::unique_lock lock(fMutex);
    return !fChanged.wait_for(lock, kMoment, [this] { return fBusy == 0; });
  }

 private:
  std::mutex fMutex;
  std::condition_variable fChanged;
  unsigned fBusy = 0;
};

/// Room for the largest frame for each thread; fewer where there is no memory for all. Throws std::bad_alloc
/// where there is none for one.
std::vector<std::unique_ptr<FrameDecoder>> DecodersFor(const Work& work, unsigned workers) {
  std::vector<std::unique_ptr<FrameDecoder>> decoders;
  const std::vector<Frame>& frames = work.plan.solid.frames;
  if (frames.empty()) return decoders;
  const std::uint32_t room = LargestOf(frames);
  while (decoders.size() < std::min<std::size_t>(workers, frames.size())) try {
      decoders.push_back(std::make_unique<FrameDecoder>(work.source, room));
    } catch (const std::bad_alloc&) {
      if (decoders.empty()) throw;
      break;
    }
  return decoders;
}

}  // namespace

unsigned CrewFor(const Plan& plan, unsigned workers, std::uint64_t memory) {
  if (!plan.solid.Is()) return workers;
  // Half of what there is, since others need some as well; one works in any case.
  const std::uint64_t each = LargestOf(plan.solid.frames) + FrameDecoder::kOwnMemory;
  return static_cast<unsigned>(std::clamp<std::uint64_t>(memory / 2 / each, 1, workers));
}

Status RunCrew(Work& work, unsigned workers, bool wall, const std::atomic<bool>* stop,
               const std::function<void(std::uint64_t)>& tell) {
  work.descriptors = DescriptorsEach(workers);
  std::optional<FolderWall> folderWall;
  if (wall) folderWall.emplace(work.root);
  const bool solid = work.plan.solid.Is();
  const auto decoders = DecodersFor(work, workers);
  if (solid) workers = static_cast<unsigned>(decoders.size());
  Muster muster;
  const auto run = [&](unsigned number) {
    try {
      if (folderWall) folderWall->Enter();
      if (solid)
        FrameWorker(work, *decoders[number]).Run();
      else
        Worker(work, number).Run();
    } catch (const std::bad_alloc&) {
      work.Fail(Fail("there is not enough memory"));
    }
    muster.Finished();
  };
  // Joined whatever happens.
  std::vector<std::jthread> threads;
  for (unsigned number = 0; number < workers; ++number) {
    muster.Started();
    try {
      threads.emplace_back(run, number);
    } catch (const std::system_error&) {  // fewer will do, but somebody must
      muster.Finished();
      if (threads.empty()) work.Fail(Fail("could not start a thread"));
      break;
    }
  }
  while (muster.StillBusy()) {
    if (Stopped(stop)) work.Fail(Interrupted());
    tell(work.written);
  }
  for (std::jthread& thread : threads) thread.join();
  tell(work.written);
  return work.Failure();
}

}  // namespace archive
