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

/// The least of a limit's files in a group's folder and those above it, up to `root`.
std::uint64_t LimitAbove(const std::string& root, std::string group, const std::string& file) {
  std::uint64_t least = kUnknown;
  for (;; group.erase(group.rfind('/'))) {
    least = std::min(least, NumberIn(root + group + "/" + file));
    if (group.find('/') == group.npos) return least;
  }
}

/// What the control groups of this process allow in all. How much of it is taken tells little: files that
/// were read count too.
std::uint64_t OfTheGroups() {
  std::uint64_t least = kUnknown;
  std::ifstream file("/proc/self/cgroup");
  for (std::string line; std::getline(file, line);) {
    const std::size_t first = line.find(':'), second = line.find(':', first + 1);
    if (second == line.npos) continue;
    const std::string controllers = "," + line.substr(first + 1, second - first - 1) + ",";
    const std::string group = line.substr(second + 1) == "/" ? "" : line.substr(second + 1);
    if (line.starts_with("0::"))
      least = std::min(least, LimitAbove("/sys/fs/cgroup", group, "memory.max"));
    else if (controllers.find(",memory,") != controllers.npos)
      least = std::min(least, LimitAbove("/sys/fs/cgroup/memory", group, "memory.limit_in_bytes"));
  }
  return least;
}

}  // namespace

unsigned Processors() {
  cpu_set_t set;
  const int count = sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set) : 1;
  return static_cast<unsigned>(std::max(count, 1));
}

std::uint64_t FreeMemory() {
  return std::min(OfTheSystem(), OfTheGroups());
}

}  // namespace archive
