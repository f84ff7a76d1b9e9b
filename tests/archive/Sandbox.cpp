// SPDX-License-Identifier: MIT
#include "archive/Sandbox.h"

#include <sys/wait.h>

#include <cstdlib>
#include <thread>

#include "archive/Expand.h"

namespace ziptest {

std::string Sandbox::Expand(const std::string& bytes, const Way& way) const {
  archive::ExpandOptions options;
  options.archive = Write("a.zip", bytes);
  options.folder = Target();
  options.mustBeNew = way.mustBeNew;
  options.flush = false;
  options.workers = way.workers;
  options.wall = way.wall;
  archive::ExpandWatcher watcher;
  std::string sentence;
  // The wall shuts in the thread that puts it up, and this one's only.
  std::thread([&] { sentence = archive::Expand(options, watcher).Sentence(); }).join();
  return sentence;
}

Outcome RunShell(const std::string& line) {
  // Leaks can't be looked for behind the helper's wall.
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  setenv("DITTO", DITTO_PROGRAM, 1);
  const TemporaryTree said;
  const std::string outputs = " >" + said.Path("out") + " 2>" + said.Path("err");
  const int status = std::system(("( " + line + " )" + outputs).c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), said.Read("out"),
          said.Read("err")};
}

}  // namespace ziptest
