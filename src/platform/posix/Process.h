// SPDX-License-Identifier: MIT
// Processes: detached programs, and commands that run to their end.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Starts `program`, a path or a name for the search path, with `arguments` in a session of its own, in the
/// folder "/", with no terminal and its streams on /dev/null: it outlives this process. Its number; -1 when
/// the program could not be executed.
pid_t StartDetached(const std::string& program, const std::vector<std::string>& arguments);

/// Does a process that StartDetached began still run? Of those that have ended nothing remains from now on.
bool DetachedRuns(pid_t id);

/// What is done while a command runs. False has the command end: it's asked to (SIGTERM), then made to.
using Wait = std::function<bool()>;

/// Runs `line` through /bin/sh in a session of its own, with its streams on /dev/null, no terminal, and
/// `toolFolder` in front of the search path. The exit code; 128 + the signal for a killed command; 127 when
/// the shell could not be started.
int RunShellLine(const std::string& line, const std::string& toolFolder, const Wait& wait);

/// Runs `program`, found by the search path, with `input` on its standard input, which nothing else holds
/// but a pipe. Output is discarded. The exit code as RunShellLine's.
int RunWithInput(const std::string& program, const std::vector<std::string>& arguments,
                 std::string_view input, const Wait& wait);

/// Starts `program` in a session of its own, gives it `text`, however long, as a file on its standard input
/// and waits up to two seconds until it answers or ends. It outlives this process.
void StartWithText(const std::string& program, const std::string& text);

/// Starts `program` with its standard output and error connected to new pipes.
struct PipedProcess {
  pid_t id = -1;
  int output = -1;  // both descriptors are the caller's, non-blocking
  int error = -1;
};
/// `input`, where one is given, becomes its standard input, and the folder open as `folder` its working
/// folder; both stay the caller's.
PipedProcess StartPiped(const std::string& program, const std::vector<std::string>& arguments, int input = -1,
                        int folder = -1);

/// Ends the command that is being waited for, if any: for a process that ends in the middle of that wait.
void EndWaitedFor();

/// Asks a child to end (SIGTERM), and makes it after five seconds. Returns once it's gone; its exit code.
int EndChild(pid_t id);
