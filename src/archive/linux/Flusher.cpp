// SPDX-License-Identifier: MIT
#include "archive/writing/Flusher.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <system_error>

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

Status Flusher::Attach(int folder) {
  if (!fWanted || !IsOnDisk(folder)) return {};
  fFolder = Descriptor(fcntl(folder, F_DUPFD_CLOEXEC, 0));
  fEnabled = static_cast<bool>(fFolder);
  return fEnabled ? Status() : FailedCall("keep the target folder open");
}

Flusher::~Flusher() {
  Join();
}

bool Flusher::Start() try {
  Join();
  fBusy = true;
  fThread = std::thread([this] {
    const bool flushed = syncfs(fFolder.Get()) == 0;
    if (!flushed && fError == 0) fError = errno;
    fBusy = false;
  });
  return true;
} catch (const std::system_error&) {
  fBusy = false;
  return false;
}

void Flusher::Join() {
  if (fThread.joinable()) fThread.join();
}

void Flusher::Begin(std::uint64_t written) {
  constexpr std::uint64_t kStep = 64 << 20;
  if (!fEnabled || fBusy || written < fBegun + kStep) return;
  fBegun = written;
  static_cast<void>(Start());
}

double Flusher::Waiting() const {
  char text[4096];
  const ssize_t length = fMemoryFacts ? pread(fMemoryFacts.Get(), text, sizeof text - 1, 0) : 0;
  text[std::max<ssize_t>(length, 0)] = '\0';
  return LineOf(text, "Dirty:") + LineOf(text, "Writeback:");
}

Status Flusher::Finish(const std::function<bool(double)>& tell) {
  constexpr std::chrono::milliseconds kMoment(50);
  if (!fEnabled) return {};
  const double all = Waiting();
  double done = 0;
  bool wanted = true;
  const auto watch = [&] {
    while (fBusy && wanted) {
      std::this_thread::sleep_for(kMoment);
      if (all > 0) done = std::clamp(1 - Waiting() / all, done, 1.0);
      wanted = tell(done);
    }
    Join();
  };
  watch();  // what was begun before may not have seen the last files
  if (!wanted) return {};
  if (fError == 0 && Start())
    watch();
  else if (fError == 0 && syncfs(fFolder.Get()) != 0)
    fError = errno;
  errno = fError;
  return fError == 0 ? Status() : FailedCall("flush the data to disk");
}

}  // namespace archive
