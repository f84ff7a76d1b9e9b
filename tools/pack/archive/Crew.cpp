// SPDX-License-Identifier: MIT
// How many workers there are.
#include "pack/archive/Crew.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>

namespace pack {

std::size_t CountWorkers(std::size_t bytes) {
  constexpr std::size_t kMost = 16;  // beyond these the reading can't keep up
  cpu_set_t cores;
  std::size_t workers = 1;
  if (::sched_getaffinity(0, sizeof cores, &cores) == 0)
    workers = static_cast<std::size_t>(CPU_COUNT(&cores));
  const long pages = ::sysconf(_SC_PHYS_PAGES);
  const long page = ::sysconf(_SC_PAGESIZE);
  if (pages > 0 && page > 0) {
    const std::size_t memory = static_cast<std::size_t>(pages) * static_cast<std::size_t>(page) / 2;
    workers = std::min(workers, memory / bytes);
  }
  return std::clamp<std::size_t>(workers, 1, kMost);
}

}  // namespace pack
