// SPDX-License-Identifier: MIT
#include "platform/posix/HelperExpansion.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <set>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t kLongestComplaint = 4096;

std::set<HelperExpansion*> gAll;

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

std::uint64_t NumberBehind(const std::string& line, std::size_t prefix) {
  std::uint64_t number = 0;
  std::from_chars(line.data() + prefix, line.data() + line.size(), number);
  return number;
}

}  // namespace

HelperExpansion::HelperExpansion(const std::string& helper, const std::vector<std::string>& arguments,
                                 int input, int folder)
    : fProcess(StartPiped(helper, arguments, input, folder)), fStarted(fProcess.id > 0) {
  gAll.insert(this);
}

HelperExpansion::~HelperExpansion() {
  Stop();
  gAll.erase(this);
  if (fProcess.output >= 0) ::close(fProcess.output);
  if (fProcess.error >= 0) ::close(fProcess.error);
}

void HelperExpansion::Stop() {
  if (fProcess.id > 0) static_cast<void>(EndChild(std::exchange(fProcess.id, -1)));
}

void HelperExpansion::StopAll() {
  for (HelperExpansion* expansion : gAll) expansion->Stop();
}

bool HelperExpansion::Running() {
  if (fProcess.id <= 0) return false;
  int status = 0;
  pid_t ended = ::waitpid(fProcess.id, &status, WNOHANG);
  if (ended < 0 && errno == EINTR) ended = 0;
  Drain(fProcess.output, fPartialLine);
  Drain(fProcess.error, fComplaint);
  if (fComplaint.size() > kLongestComplaint) fComplaint.resize(kLongestComplaint);
  for (std::size_t end = 0; (end = fPartialLine.find('\n')) != std::string::npos;) {
    TakeReport(fPartialLine.substr(0, end));
    fPartialLine.erase(0, end + 1);
  }
  if (ended == 0) return true;
  fProcess.id = -1;
  fSucceeded = ended > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (fSucceeded) fDone = 1;
  return false;
}

void HelperExpansion::TakeReport(const std::string& line) {
  if (line.starts_with("items ")) fItems = NumberBehind(line, 6);
  if (line.starts_with("largest ")) fLargest = NumberBehind(line, 8);
  if (line.starts_with("total ")) fTotal = NumberBehind(line, 6);
  if (line.starts_with("written ") && fTotal > 0)
    fDone = std::clamp(static_cast<double>(NumberBehind(line, 8)) / static_cast<double>(fTotal), fDone, 1.0);
}

std::string HelperExpansion::Reason() const {
  if (fSucceeded) return "";
  if (!fStarted) return "The expansion program can't be started.";
  constexpr std::string_view kPrefix = "ditto: ";
  std::string sentence = fComplaint.substr(0, fComplaint.find('\n'));
  if (sentence.starts_with(kPrefix)) sentence.erase(0, kPrefix.size());
  if (sentence.empty()) return "The expansion ended before its time.";
  sentence.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence.front())));
  return sentence + ".";
}
