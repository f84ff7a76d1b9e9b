// SPDX-License-Identifier: MIT
// The expansion helper: ditto -xk [--new] [--progress] [--no-sync] [--scrambled] [--check|--plan]
//                             [--with-parent] ARCHIVE FOLDER
#include <sys/prctl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "platform/archive/Expand.h"
#include "platform/archive/ProgressLines.h"

namespace {

constexpr int kFailed = 1, kBadUsage = 2;

std::atomic<bool> gStop{false};
static_assert(std::atomic<bool>::is_always_lock_free);

void Stop(int) {
  gStop = true;
}

void SetSignals() {
  struct sigaction stop {};
  stop.sa_handler = Stop;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaction(signal, &stop, nullptr);
  // A reader that went away and a limit on file sizes come as errors of the calls.
  for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

struct Command {
  archive::ExpandOptions options;
  bool progress = false;
  bool withParent = false;  // whoever started it is gone: it stops and leaves nothing
};

/// False for a word that is none of these.
bool TakeOption(std::string_view word, Command& command) {
  using Extent = archive::ExpandOptions::Extent;
  if (word == "--new")
    command.options.mustBeNew = true;
  else if (word == "--progress")
    command.progress = true;
  else if (word == "--no-sync")
    command.options.flush = false;
  else if (word == "--scrambled")
    command.options.scrambled = true;
  else if (word == "--check")
    command.options.extent = Extent::Check;
  else if (word == "--plan")
    command.options.extent = Extent::Plan;
  else if (word == "--with-parent")
    command.withParent = true;
  else
    return false;
  return true;
}

/// The last two arguments are the archive and the folder, whatever they begin with.
std::optional<Command> Parse(int count, char** arguments) {
  constexpr int kPaths = 2;
  Command command;
  bool extract = false, zip = false;
  for (int i = 1; i < count - kPaths; ++i) {
    const std::string_view argument = arguments[i];
    if (argument == "--" && i + 1 == count - kPaths) break;
    if (TakeOption(argument, command)) continue;
    if (argument.size() < 2 || argument[0] != '-' || argument.find_first_not_of("xk", 1) != argument.npos)
      return std::nullopt;
    for (const char letter : argument.substr(1)) (letter == 'x' ? extract : zip) = true;
  }
  if (!extract || !zip) return std::nullopt;
  command.options.archive = arguments[count - 2];
  command.options.folder = arguments[count - 1];
  return command;
}

}  // namespace

int main(int count, char** arguments) {
  std::optional<Command> command = Parse(count, arguments);
  if (!command) {
    std::fputs(
        "usage: ditto -xk [--new] [--progress] [--no-sync] [--scrambled] [--check|--plan] "
        "[--with-parent] [--] ARCHIVE FOLDER\n",
        stderr);
    return kBadUsage;
  }
  SetSignals();
  if (command->withParent) {
    static_cast<void>(::prctl(PR_SET_PDEATHSIG, SIGTERM));
    // Gone in between: then init or a reaper is the parent, and nobody waits for this.
    if (::getppid() == 1) gStop = true;
  }
  command->options.wall = true;
  command->options.stop = &gStop;
  archive::ProgressLines progress(command->progress ? STDOUT_FILENO : -1);
  const archive::Status status = archive::Expand(command->options, progress);
  if (!status.Ok()) {
    std::fprintf(stderr, "ditto: %s\n", status.Sentence().c_str());
    return kFailed;
  }
  progress.Done();
  return 0;
}
