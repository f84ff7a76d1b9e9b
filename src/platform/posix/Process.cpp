// SPDX-License-Identifier: MIT
// Processes by posix_spawn(3): no copy of a process that has windows open.
#include "platform/posix/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>

#include "base/Descriptor.h"
#include "base/SystemFiles.h"
#include "base/WriteAll.h"

namespace {

constexpr std::size_t kLongestWord = 100'000;  // Linux: 128 KiB with the closing NUL

/// Where a new process's three standard streams go, and how it starts.
class SpawnSetup {
 public:
  explicit SpawnSetup(short flags) {
    ::posix_spawn_file_actions_init(&fActions);
    ::posix_spawnattr_init(&fAttributes);
    // What this process ignores or blocks is its own affair.
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&fAttributes, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::sigaddset(&signals, SIGCHLD);
    ::sigaddset(&signals, SIGXFSZ);
    ::posix_spawnattr_setsigdefault(&fAttributes, &signals);
    ::posix_spawnattr_setflags(&fAttributes,
                               static_cast<short>(flags | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    Silence(STDIN_FILENO, O_RDONLY);
  }
  ~SpawnSetup() {
    ::posix_spawn_file_actions_destroy(&fActions);
    ::posix_spawnattr_destroy(&fAttributes);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;

  void Silence(int stream, int flags = O_WRONLY) {
    ::posix_spawn_file_actions_addopen(&fActions, stream, "/dev/null", flags, 0);
  }
  /// The new process keeps no disc busy that this one was started from.
  void LeaveFolder() { ::posix_spawn_file_actions_addchdir_np(&fActions, "/"); }
  void WorkIn(int folder) { ::posix_spawn_file_actions_addfchdir_np(&fActions, folder); }
  void Connect(int stream, int descriptor) {
    ::posix_spawn_file_actions_adddup2(&fActions, descriptor, stream);
  }

  pid_t Start(const std::string& program, const std::vector<std::string>& arguments, char** environment) {
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    pid_t id = -1;
    const int error =
        ::posix_spawnp(&id, program.c_str(), &fActions, &fAttributes, words.data(), environment);
    errno = error;
    return error == 0 ? id : -1;
  }

 private:
  posix_spawn_file_actions_t fActions;
  posix_spawnattr_t fAttributes;
};

/// This process's environment with `folder`, if any, first in PATH. The result owns the strings.
std::vector<std::string> EnvironmentWithTools(const std::string& folder) {
  std::vector<std::string> variables;
  std::string path = "/usr/local/bin:/usr/bin:/bin";
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (std::strncmp(*variable, "PATH=", 5) != 0)
      variables.emplace_back(*variable);
    else if ((*variable)[5] != '\0')  // an empty element is the working folder
      path = *variable + 5;
  }
  variables.push_back("PATH=" + (folder.empty() ? "" : folder + ":") + path);
  return variables;
}

/// A file without a name that holds `text`, at its beginning: nobody waits until it has been read, however
/// long it is. None where the memory isn't there. `flags` are memfd_create(2)'s.
Descriptor TextInMemory(std::string_view text, bool inherited) {
  Descriptor file = OpenInMemory(inherited);
  if (file && (!WriteAll(file.Get(), text.data(), text.size()) || ::lseek(file.Get(), 0, SEEK_SET) != 0))
    file = Descriptor();
  return file;
}

int ExitCode(int status) {
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : 127;
}

pid_t gWaitedFor = 0;
std::vector<pid_t> gDetached;  // those that weren't seen to have ended

int WaitFor(pid_t id, const Wait& wait) {
  static const int registered = std::atexit(EndWaitedFor);
  static_cast<void>(registered);  // without it the command goes on by itself
  gWaitedFor = id;
  int status = 0;
  pid_t ended = 0;
  while ((ended = ::waitpid(id, &status, WNOHANG)) == 0 || (ended < 0 && errno == EINTR)) {
    if (wait()) continue;
    gWaitedFor = 0;
    return EndChild(id);
  }
  gWaitedFor = 0;
  return ended == id ? ExitCode(status) : 127;
}

}  // namespace

pid_t StartDetached(const std::string& program, const std::vector<std::string>& arguments) {
  SpawnSetup setup(POSIX_SPAWN_SETSID);
  setup.LeaveFolder();
  setup.Silence(STDOUT_FILENO);
  setup.Silence(STDERR_FILENO);
  pid_t id = setup.Start(program, arguments, environ);
  if (id <= 0 && errno == ENOEXEC) {
    // A script that doesn't name its interpreter is the shell's, as on a command line.
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    id = setup.Start("/bin/sh", words, environ);
  }
  if (id > 0) gDetached.push_back(id);
  return id;
}

bool DetachedRuns(pid_t id) {
  std::erase_if(gDetached, [](pid_t begun) { return ::waitpid(begun, nullptr, WNOHANG) != 0; });
  return std::find(gDetached.begin(), gDetached.end(), id) != gDetached.end();
}

void EndWaitedFor() {
  if (gWaitedFor > 0) static_cast<void>(EndChild(std::exchange(gWaitedFor, 0)));
}

int EndChild(pid_t id) {
  constexpr int kLooks = 500;
  constexpr timespec kLook{0, 10'000'000};
  // A session of its own has its number, and ends as a whole.
  const pid_t whom = ::getsid(id) == id ? -id : id;
  for (const int signal : {SIGTERM, SIGKILL}) {
    static_cast<void>(::kill(whom, signal));
    for (int look = 0; look < kLooks; ++look) {
      int status = 0;
      const pid_t ended = ::waitpid(id, &status, WNOHANG);
      if (ended == id) return ExitCode(status);
      if (ended < 0 && errno != EINTR) return 127;
      ::nanosleep(&kLook, nullptr);
    }
  }
  return 127;
}

int RunShellLine(const std::string& line, const std::string& toolFolder, const Wait& wait) {
  SpawnSetup setup(POSIX_SPAWN_SETSID);
  setup.Silence(STDOUT_FILENO);
  setup.Silence(STDERR_FILENO);
  std::vector<std::string> variables = EnvironmentWithTools(toolFolder);
  std::vector<char*> environment;
  for (std::string& variable : variables) environment.push_back(variable.data());
  environment.push_back(nullptr);
  std::vector<std::string> words{"-c", "--", line};
  // The system takes no longer word; as a file a line of any length is the shell's.
  Descriptor file;
  if (line.size() >= kLongestWord) {
    file = TextInMemory(line, true);
    if (!file) return 127;
    words = {PathOfDescriptor(file.Get())};
  }
  const pid_t id = setup.Start("/bin/sh", words, environment.data());
  return id <= 0 ? 127 : WaitFor(id, wait);
}

int RunWithInput(const std::string& program, const std::vector<std::string>& arguments,
                 std::string_view input, const Wait& wait) {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) return 127;
  Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  SpawnSetup setup(0);
  setup.Connect(STDIN_FILENO, reading.Get());
  setup.Silence(STDOUT_FILENO);
  setup.Silence(STDERR_FILENO);
  const pid_t id = setup.Start(program, arguments, environ);
  if (id <= 0) return 127;
  reading = Descriptor();
  // A program that doesn't want it has ended, and tells by its exit code.
  static_cast<void>(WriteAll(writing.Get(), input.data(), input.size()));
  writing = Descriptor();
  return WaitFor(id, wait);
}

void StartWithText(const std::string& program, const std::string& text) {
  constexpr int kLongestWait = 2000;  // milliseconds
  const Descriptor input = TextInMemory(text, false);
  int output[2] = {-1, -1};
  if (!input || ::pipe2(output, O_CLOEXEC) != 0) return;
  const Descriptor outputRead(output[0]);
  Descriptor outputWrite(output[1]);
  SpawnSetup setup(POSIX_SPAWN_SETSID);
  setup.Connect(STDIN_FILENO, input.Get());
  setup.Connect(STDOUT_FILENO, outputWrite.Get());
  setup.Silence(STDERR_FILENO);
  if (setup.Start(program, {}, environ) <= 0) return;
  outputWrite = Descriptor();
  pollfd answer{outputRead.Get(), POLLIN, 0};
  static_cast<void>(::poll(&answer, 1, kLongestWait));  // without an answer there is nothing more to do
}

PipedProcess StartPiped(const std::string& program, const std::vector<std::string>& arguments, int input,
                        int folder) {
  int output[2] = {-1, -1};
  int error[2] = {-1, -1};
  if (::pipe2(output, O_CLOEXEC) != 0) return {};
  Descriptor outputRead(output[0]);
  const Descriptor outputWrite(output[1]);
  if (::pipe2(error, O_CLOEXEC) != 0) return {};
  Descriptor errorRead(error[0]);
  const Descriptor errorWrite(error[1]);
  // A terminal's interrupt is for the installer, who ends it in order.
  SpawnSetup setup(POSIX_SPAWN_SETSID);
  setup.Connect(STDOUT_FILENO, outputWrite.Get());
  setup.Connect(STDERR_FILENO, errorWrite.Get());
  if (input >= 0) setup.Connect(STDIN_FILENO, input);
  if (folder >= 0) setup.WorkIn(folder);
  const pid_t id = setup.Start(program, arguments, environ);
  if (id <= 0) return {};
  for (const int end : {outputRead.Get(), errorRead.Get()})
    static_cast<void>(::fcntl(end, F_SETFL, ::fcntl(end, F_GETFL) | O_NONBLOCK));
  return {id, outputRead.Release(), errorRead.Release()};
}
