// SPDX-License-Identifier: MIT
// Work for all cores whose results come back in order.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace pack {

/// Workers that a crew has if nothing else is said: one for each core that this process may use, as far as
/// the memory reaches for `bytes` each.
std::size_t CountWorkers(std::size_t bytes);

/// Each worker makes a `Context` of its own and turns jobs into results by `work`. What they give goes to
/// `sink`, on the caller's thread and in the order of the jobs. An exception of a job comes out where its
/// result would.
template <typename Context, typename Job, typename Result>
class Crew {
 public:
  using Make = std::function<std::unique_ptr<Context>()>;
  using Work = std::function<Result(Context&, Job&)>;
  using Sink = std::function<void(Result)>;

  /// At most `room` jobs are under way at a time.
  Crew(std::size_t workers, std::size_t room, Make make, Work work, Sink sink)
      : fRoom(room), fMake(std::move(make)), fWork(std::move(work)), fSink(std::move(sink)) {
    for (std::size_t i = 0; i < workers; ++i) fThreads.emplace_back([this] { Toil(); });
  }
  ~Crew() {
    {
      const std::lock_guard lock(fMutex);
      fEnding = true;
      fWaiting.clear();
    }
    fCall.notify_all();
    for (std::thread& thread : fThreads) thread.join();
  }
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;

  void Put(Job job) {
    while (fResults.size() >= fRoom) Take();
    Task task{std::move(job), {}};
    fResults.push_back(task.result.get_future());
    {
      const std::lock_guard lock(fMutex);
      fWaiting.push_back(std::move(task));
    }
    fCall.notify_one();
  }

  /// Waits for all that was put.
  void Finish() {
    while (!fResults.empty()) Take();
  }

 private:
  struct Task {
    Job job;
    std::promise<Result> result;
  };

  void Take() {
    std::future<Result> first = std::move(fResults.front());
    fResults.pop_front();
    fSink(first.get());
  }

  std::optional<Task> Next() {
    std::unique_lock lock(fMutex);
    fCall.wait(lock, [this] { return fEnding || !fWaiting.empty(); });
    if (fEnding) return std::nullopt;
    Task task = std::move(fWaiting.front());
    fWaiting.pop_front();
    return task;
  }

  void Toil() {
    std::unique_ptr<Context> context;
    while (std::optional<Task> task = Next()) {
      try {
        if (!context) context = fMake();
        task->result.set_value(fWork(*context, task->job));
      } catch (...) {
        task->result.set_exception(std::current_exception());
      }
    }
  }

  const std::size_t fRoom;
  const Make fMake;
  const Work fWork;
  const Sink fSink;
  std::mutex fMutex;
  std::condition_variable fCall;
  std::deque<Task> fWaiting;
  bool fEnding = false;
  std::deque<std::future<Result>> fResults;
  std::vector<std::thread> fThreads;
};

}  // namespace pack
