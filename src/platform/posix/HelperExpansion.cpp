// SPDX-License-Identifier: MIT
#include "platform/posix/HelperExpansion.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>

namespace {

constexpr std::size_t kLongestComplaint = 4096;

/// Appends what can be read at once.
void Drain(int descriptor, std::string& text) {
  char buffer[4096];
  while (true) {
    const ssize_t got = ::read(descriptor, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return;
    text.append(buffer, static_cast<std::size_t>(got));
  }
}

double NumberBehind(const std::string& line, std::size_t prefix) {
  std::uint64_t number = 0;
  std::from_chars(line.data() + prefix, line.data() + line.size(), number);
  return static_cast<double>(number);
}

}  // namespace

HelperExpansion::HelperExpansion(const std::string& helper, const FolderItem& archive)
    : fProcess(StartPiped(helper, {"-xk", "--new", "--progress", "--", archive.NativePath(),
                                   archive.Parent().NativePath()})) {}

HelperExpansion::~HelperExpansion() {
  if (fProcess.output >= 0) ::close(fProcess.output);
  if (fProcess.error >= 0) ::close(fProcess.error);
}

bool HelperExpansion::Running() {
  if (fProcess.id <= 0) return false;
  int status = 0;
  const pid_t ended = ::waitpid(fProcess.id, &status, WNOHANG);
  Drain(fProcess.output, fPartialLine);
  Drain(fProcess.error, fComplaint);
  if (fComplaint.size() > kLongestComplaint) fComplaint.resize(kLongestComplaint);
  for (std::size_t end = 0; (end = fPartialLine.find('\n')) != std::string::npos;) {
    TakeReport(fPartialLine.substr(0, end));
    fPartialLine.erase(0, end + 1);
  }
  if (ended == 0 || (ended < 0 && errno == EINTR)) return true;
  fProcess.id = -1;
  fSucceeded = ended > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  // The reason is the publisher's to know; the user is told in the publisher's words.
  if (!fSucceeded && !fComplaint.empty()) std::fputs(fComplaint.c_str(), stderr);
  if (fSucceeded) fDone = 1;
  return false;
}

void HelperExpansion::TakeReport(const std::string& line) {
  if (line.starts_with("total ")) fTotal = NumberBehind(line, 6);
  if (line.starts_with("written ") && fTotal > 0)
    fDone = std::clamp(NumberBehind(line, 8) / fTotal, fDone, 1.0);
}
