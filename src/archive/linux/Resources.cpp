// SPDX-License-Identifier: MIT
#include "archive/writing/Resources.h"

#include <sched.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <string>

namespace archive {
namespace {

constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();

/// The number that a file begins with; kUnknown where it holds a word.
std::uint64_t NumberIn(const std::string& path) {
  std::ifstream file(path);
  std::uint64_t number = 0;
  return file >> number ? number : kUnknown;
}

/// MemAvailable of /proc/meminfo.
std::uint64_t OfTheSystem() {
  std::ifstream file("/proc/meminfo");
  std::uint64_t kibibytes = 0;
  for (std::string name, rest; file >> name; std::getline(file, rest))
    if (name == "MemAvailable:" && file >> kibibytes) return kibibytes << 10;
  return kUnknown;
}

/// What the control group of this process may still take: memory.max and memory.current.
std::uint64_t OfTheGroup() {
  std::ifstream file("/proc/self/cgroup");
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with("0::/")) continue;
    const std::string folder = "/sys/fs/cgroup" + line.substr(3);
    const std::uint64_t most = NumberIn(folder + "/memory.max"), used = NumberIn(folder + "/memory.current");
    if (most != kUnknown && used != kUnknown) return most - std::min(most, used);
  }
  return kUnknown;
}

}  // namespace

unsigned Processors() {
  cpu_set_t set;
  const int count = sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set) : 1;
  return static_cast<unsigned>(std::max(count, 1));
}

std::uint64_t FreeMemory() {
  return std::min(OfTheSystem(), OfTheGroup());
}

}  // namespace archive
