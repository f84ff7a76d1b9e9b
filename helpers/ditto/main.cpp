// SPDX-License-Identifier: MIT
// The expansion helper: ditto -xk [--new] [--ours] [--progress] [--no-sync] [--scrambled] [--check|--plan]
//                             [--with-parent=PROCESS] ARCHIVE FOLDER
#include <unistd.h>

#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "archive/Expand.h"
#include "archive/ProgressLines.h"
#include "base/ParentWatch.h"
#include "base/StandardStreams.h"

namespace {

constexpr int kFailed = 1, kBadUsage = 2;
constexpr std::string_view kWithParent = "--with-parent=";

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
  pid_t parent = 0;  // when that process is gone, this one stops and leaves nothing
};

/// False for a word that is none of these.
bool TakeOption(std::string_view word, Command& command) {
  using Extent = archive::ExpandOptions::Extent;
  if (word == "--new")
    command.options.mustBeNew = true;
  else if (word == "--progress")
    command.progress = true;
  else if (word == "--ours")
    command.options.folderIsOurs = true;
  else if (word == "--no-sync")
    command.options.flush = false;
  else if (word == "--scrambled")
    command.options.scrambled = true;
  else if (word == "--check")
    command.options.extent = Extent::Check;
  else if (word == "--plan")
    command.options.extent = Extent::Plan;
  else if (word.starts_with(kWithParent))
    return std::from_chars(word.data() + kWithParent.size(), word.data() + word.size(), command.parent).ptr ==
           word.data() + word.size();
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
  OpenStandardStreams();
  std::optional<Command> command = Parse(count, arguments);
  if (!command) {
    std::fputs(
        "usage: ditto -xk [--new] [--ours] [--progress] [--no-sync] [--scrambled] [--check|--plan] "
        "[--with-parent=PROCESS] [--] ARCHIVE FOLDER\n",
        stderr);
    return kBadUsage;
  }
  SetSignals();
  if (command->parent > 0 && !EndWithParent(command->parent)) gStop = true;
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
