// SPDX-License-Identifier: MIT
// Reads the named archive's plan several times, as the expansion helper does before it writes, and prints the
// median in milliseconds.
#include "archive/planning/Plan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const int file = open(argv[1], O_RDONLY | O_CLOEXEC);
  struct stat facts {};
  if (file < 0 || fstat(file, &facts) != 0) return 1;
  std::array<double, 9> times{};
  for (double& time : times) {
    const auto start = std::chrono::steady_clock::now();
    const archive::FileSource source(file, static_cast<std::uint64_t>(facts.st_size));
    if (!archive::ReadPlan(source, std::thread::hardware_concurrency()).Ok()) return 1;
    time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  }
  std::sort(times.begin(), times.end());
  std::printf("%.1f\n", times[times.size() / 2]);
  close(file);
  return 0;
}
