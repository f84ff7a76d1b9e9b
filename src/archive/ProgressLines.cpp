// SPDX-License-Identifier: MIT
// Puts progress lines into a pipe.
#include "archive/ProgressLines.h"

#include <poll.h>
#include <unistd.h>

namespace archive {
namespace {

constexpr int kNoPatience = 0, kSomePatience = 1000;  // milliseconds

}  // namespace

void ProgressLines::Planned(std::uint64_t items, std::uint64_t largest) {
  Put("items " + std::to_string(items) + "\n", kSomePatience);
  Put("largest " + std::to_string(largest) + "\n", kSomePatience);
}

void ProgressLines::Total(std::uint64_t bytes) {
  Put("total " + std::to_string(bytes) + "\n", kSomePatience);
}

void ProgressLines::Written(std::uint64_t bytes) {
  if (bytes <= fLast) return;
  fLast = bytes;
  Put("written " + std::to_string(bytes) + "\n", kNoPatience);
}

void ProgressLines::Done() {
  Put("done\n", kSomePatience);
}

void ProgressLines::Put(const std::string& line, int patience) {
  pollfd ready{fDescriptor, POLLOUT, 0};
  if (fDescriptor < 0 || poll(&ready, 1, patience) <= 0) return;
  // A line is far shorter than what a pipe takes in one piece.
  if (write(fDescriptor, line.data(), line.size()) < 0) fDescriptor = -1;
}

}  // namespace archive
