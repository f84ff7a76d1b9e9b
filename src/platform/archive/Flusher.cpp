// SPDX-License-Identifier: MIT
#include "platform/archive/Flusher.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string_view>

namespace archive {
namespace {

bool IsOnDisk(int folder) {
  struct statfs facts;
  return fstatfs(folder, &facts) != 0 || (facts.f_type != TMPFS_MAGIC && facts.f_type != RAMFS_MAGIC);
}

/// The kibibytes of a line of /proc/meminfo.
double LineOf(std::string_view text, std::string_view name) {
  const std::size_t line = text.find(name);
  return line == text.npos ? 0 : std::strtod(text.data() + line + name.size(), nullptr);
}

}  // namespace

Flusher::Flusher(bool wanted)
    : fWanted(wanted), fMemoryFacts(wanted ? open("/proc/meminfo", O_RDONLY | O_CLOEXEC) : -1) {}

void Flusher::Attach(int folder) {
  fFolder = folder;
  fEnabled = fWanted && IsOnDisk(folder);
}

Flusher::~Flusher() {
  Join();
}

void Flusher::Start() {
  Join();
  fBusy = true;
  fThread = std::thread([this] {
    const bool flushed = syncfs(fFolder) == 0;
    fError = flushed ? 0 : errno;
    fBusy = false;
  });
}

void Flusher::Join() {
  if (fThread.joinable()) fThread.join();
}

void Flusher::Begin(std::uint64_t written) {
  constexpr std::uint64_t kStep = 64 << 20;
  if (!fEnabled || fBusy || written < fBegun + kStep) return;
  fBegun = written;
  Start();
}

double Flusher::Waiting() const {
  char text[4096];
  const ssize_t length = fMemoryFacts ? pread(fMemoryFacts.Get(), text, sizeof text - 1, 0) : 0;
  text[std::max<ssize_t>(length, 0)] = '\0';
  return LineOf(text, "Dirty:") + LineOf(text, "Writeback:");
}

Status Flusher::Finish(const std::function<void(double)>& tell) {
  constexpr std::chrono::milliseconds kMoment(50);
  if (!fEnabled) return {};
  // What was begun before must end first: it may not have seen the last files.
  const double all = Waiting();
  double done = 0;
  const auto watch = [&] {
    while (fBusy) {
      std::this_thread::sleep_for(kMoment);
      if (all > 0) done = std::clamp(1 - Waiting() / all, done, 1.0);
      tell(done);
    }
    Join();
  };
  watch();
  Start();
  watch();
  errno = fError;
  return fError == 0 ? Status() : FailedCall("flush the data to disk");
}

}  // namespace archive
