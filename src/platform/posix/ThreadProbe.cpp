// SPDX-License-Identifier: MIT
#include "platform/posix/ThreadProbe.h"

#include <sys/resource.h>

#include <latch>
#include <system_error>
#include <thread>
#include <vector>

namespace {

bool IsNear(int resource, rlim_t amount) {
  rlimit limit{};
  return ::getrlimit(static_cast<__rlimit_resource>(resource), &limit) == 0 && limit.rlim_cur < amount;
}

}  // namespace

bool ThreadsCanStart(unsigned count) {
  constexpr rlim_t kManyThreads = 1000, kMuchRoom = rlim_t{4} << 30;  // of address space, in bytes
  if (!IsNear(RLIMIT_NPROC, kManyThreads) && !IsNear(RLIMIT_AS, kMuchRoom)) return true;
  std::latch ended(1);
  std::vector<std::thread> threads;
  try {
    while (threads.size() < count) threads.emplace_back([&ended] { ended.wait(); });
  } catch (const std::system_error&) {
    // Counted below.
  }
  ended.count_down();
  for (std::thread& thread : threads) thread.join();
  return threads.size() == count;
}
