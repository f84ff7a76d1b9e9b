// SPDX-License-Identifier: MIT
// Fetches an address and prints the bytes of the answer, the seconds that it took, and the most memory of the
// process in KiB before and behind it.
// Usage: QT_QPA_PLATFORM=offscreen bench-download ADDRESS
#include <sys/resource.h>

#include <chrono>
#include <cstdio>

#include "http/Requests.h"
#include "platform/Application.h"
#include "platform/qt/QtMachine.h"

namespace {

long MostMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  QtMachine machine;
  Machine::Install(&machine);
  Application application(argc, argv, [] { return false; });
  return application.Run([&] {
    const long before = MostMemory();
    const auto start = std::chrono::steady_clock::now();
    const std::size_t size = GlobalsKv::HttpGet(argv[1], 60).size();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%zu %.2f %ld %ld\n", size, taken.count(), before, MostMemory());
    Application::Quit(0);
  });
}
