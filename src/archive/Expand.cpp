// SPDX-License-Identifier: MIT
// The walk of an expansion: plan, check, write, publish.
#include "archive/Expand.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <thread>

#include "archive/Wall.h"
#include "archive/planning/Plan.h"
#include "archive/planning/Room.h"
#include "archive/writing/Crew.h"
#include "archive/writing/Finish.h"
#include "archive/writing/Flusher.h"
#include "archive/writing/Publisher.h"
#include "archive/writing/Resources.h"
#include "archive/writing/Staging.h"
#include "archive/writing/TargetFolder.h"

namespace archive {
namespace {

/// More would only wait for the disk and take memory.
constexpr unsigned kMostWorkers = 16;

/// The mode of what is created is the archive's, whatever the user's mask.
class NoMask {
 public:
  NoMask() : fBefore(umask(0)) {}
  ~NoMask() { umask(fBefore); }
  NoMask(const NoMask&) = delete;
  NoMask& operator=(const NoMask&) = delete;

 private:
  const mode_t fBefore;
};

/// What an archive is for bears its name, without the extension.
std::string StemOf(const std::string& archive) {
  const std::string name = archive.substr(archive.find_last_of('/') + 1);
  return name.substr(0, name.find_last_of('.'));
}

Result<Descriptor> OpenArchive(const std::string& path, std::uint64_t& size) {
  // Never waits for the other end of a pipe.
  Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat facts;
  if (!file || fstat(file.Get(), &facts) != 0) return FailedCall("open the archive", path);
  if (!S_ISREG(facts.st_mode)) return Fail("the archive ", Quoted(path), " is not a file");
  size = static_cast<std::uint64_t>(facts.st_size);
  return file;
}

/// What is on its way to the disk counts as work of the watcher's too: a part of the bytes again.
class Progress {
 public:
  Progress(ExpandWatcher& watcher, std::uint64_t bytes, bool flushes)
      : fWatcher(watcher), fBytes(bytes), fFlush(flushes ? bytes / 4 : 0) {
    watcher.Total(fBytes + fFlush);
  }
  void Written(std::uint64_t bytes) { fWatcher.Written(std::min(bytes, fBytes)); }
  void Flushed(double share) {
    fWatcher.Written(fBytes + static_cast<std::uint64_t>(share * static_cast<double>(fFlush)));
  }

 private:
  ExpandWatcher& fWatcher;
  const std::uint64_t fBytes, fFlush;
};

Status WriteAndPublish(const ExpandOptions& options, const Plan& plan, const Source& source, unsigned workers,
                       int folder, Flusher& flusher, ExpandWatcher& watcher) {
  Publisher publisher(plan, folder, options.mustBeNew, StemOf(options.archive));
  Status status = publisher.Check();
  if (status.Ok()) status = CheckRoom(folder, plan.bytes, plan.tree.Nodes().size() - 1);
  if (!status.Ok()) return status;

  Result<Staging> staging = Staging::Make(folder);
  if (!staging.Ok()) return staging.Failure();
  status = flusher.Attach(staging->Get());
  if (!status.Ok()) return status;
  Progress progress(watcher, plan.bytes, flusher.Enabled());
  const NoMask noMask;
  Work work(plan, source, staging->Get(), workers);
  status = RunCrew(work, workers, options.wall, options.stop, [&](std::uint64_t written) {
    progress.Written(written);
    flusher.Begin(written);
  });
  if (status.Ok()) status = FinishTree(plan, staging->Get(), work.made, publisher);
  if (status.Ok() && Stopped(options.stop)) status = Interrupted();
  const auto flushed = [&](double share) {
    progress.Flushed(share);
    return !Stopped(options.stop);
  };
  if (status.Ok()) status = flusher.Finish(flushed);
  if (status.Ok() && Stopped(options.stop)) status = Interrupted();
  return status.Ok() ? publisher.Publish(staging->Get()) : status;
}

/// The room is looked at by who asks: what is in the way may go first.
Status Check(const ExpandOptions& options, const Plan& plan, const Source& source, unsigned workers,
             ExpandWatcher& watcher) {
  std::uint64_t largest = 0;
  for (NodeId node = kRoot + 1; node < plan.tree.Nodes().size(); ++node)
    if (plan.tree[node].entry != Node::kNoEntry) largest = std::max(largest, plan.EntryOf(node).size);
  watcher.Planned(plan.tree.Nodes().size() - 1, largest);
  watcher.Total(plan.bytes);
  if (options.extent == ExpandOptions::Extent::Plan) return {};
  if (options.wall) FolderWall().Enter();
  Work work(plan, source, Work::kNowhere, workers);
  return RunCrew(work, workers, false, options.stop, [&](std::uint64_t read) { watcher.Written(read); });
}

/// Reads the plan on a thread that may neither write nor open anything.
Result<Plan> PlanShutIn(const Source& source, unsigned workers, const ExpandOptions& options) {
  if (!options.wall) return ReadPlan(source, workers, options.stop);
  tzset();  // reads a file
  RestrictCalls();
  std::optional<Result<Plan>> plan;
  std::exception_ptr failure;
  std::thread([&] {
    try {
      FolderWall().Enter();
      plan.emplace(ReadPlan(source, workers, options.stop));
    } catch (...) {
      failure = std::current_exception();
    }
  }).join();
  if (failure) std::rethrow_exception(failure);
  return std::move(*plan);
}

Status ExpandUnguarded(const ExpandOptions& options, ExpandWatcher& watcher) {
  std::uint64_t size = 0;
  Result<Descriptor> file = OpenArchive(options.archive, size);
  if (!file.Ok()) return file.Failure();
  Result<TargetFolder> target = TargetFolder::Find(options.folder);
  if (!target.Ok()) return target.Failure();
  if (options.mustBeNew && !target->Exists())
    return Fail("the folder ", Quoted(options.folder), " is missing");
  if (options.folderIsOurs) {
    const Status counted = target->CountAsMade();
    if (!counted.Ok()) return counted;
  }

  const unsigned workers = std::min(options.workers != 0 ? options.workers : Processors(), kMostWorkers);
  const std::uint64_t memory = FreeMemory();
  Flusher flusher(options.flush);
  std::unique_ptr<Source> source;
  if (options.scrambled)
    source = std::make_unique<ScrambledSource>(file->Get(), size);
  else
    source = std::make_unique<FileSource>(file->Get(), size);
  Result<Plan> plan = PlanShutIn(*source, workers, options);
  if (!plan.Ok()) return plan.Failure();
  if (options.extent != ExpandOptions::Extent::All)
    return Check(options, *plan, *source, CrewFor(*plan, workers, memory), watcher);

  Status status = target->Make();
  if (!status.Ok()) return status;
  if (options.wall) FolderWall(target->Get(), target->Above()).Enter();
  RemoveLeftovers(target->Get());
  status = WriteAndPublish(options, *plan, *source, CrewFor(*plan, workers, memory), target->Get(), flusher,
                           watcher);
  if (status.Ok()) target->Keep();
  return status;
}

}  // namespace

Status Expand(const ExpandOptions& options, ExpandWatcher& watcher) try {
  return ExpandUnguarded(options, watcher);
} catch (const std::bad_alloc&) {
  return Fail("there is not enough memory");
} catch (const std::system_error&) {
  return Fail("could not start a thread");
}

}  // namespace archive
