// SPDX-License-Identifier: MIT
// Folders, snapshots and processes for the tests.
#include "archive/Sandbox.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace ziptest {

Snapshot Look(const std::string& folder) {
  Snapshot found;
  if (!fs::exists(folder)) return found;
  for (const fs::directory_entry& item : fs::recursive_directory_iterator(folder)) {
    struct stat facts {};
    lstat(item.path().c_str(), &facts);
    std::ostringstream text;
    const std::string path = item.path().string().substr(folder.size() + 1);
    if (S_ISLNK(facts.st_mode))
      text << "link " << fs::read_symlink(item.path()).string();
    else if (S_ISDIR(facts.st_mode))
      text << "folder " << std::oct << (facts.st_mode & 07777);
    else if (S_ISREG(facts.st_mode))
      text << "file " << std::oct << (facts.st_mode & 07777) << " " << Read(item.path());
    else
      text << "other";
    found[path] = text.str();
  }
  return found;
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string Read(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

Sandbox::Sandbox() {
  std::string name = (fs::temp_directory_path() / "ziptest-XXXXXX").string();
  fRoot = mkdtemp(name.data());
}

Sandbox::~Sandbox() {
  static_cast<void>(RunShell("chmod -R u+rwx '" + fRoot + "' && rm -rf '" + fRoot + "'"));
}

std::string Sandbox::Expand(const std::string& bytes, bool mustBeNew) const {
  Write(Archive(), bytes);
  archive::ExpandOptions options;
  options.archive = Archive();
  options.folder = Target();
  options.mustBeNew = mustBeNew;
  options.flush = false;
  options.workers = 2;
  archive::ExpandWatcher watcher;
  const archive::Status status = archive::Expand(options, watcher);
  return status.Sentence();
}

Outcome RunShell(const std::string& line) {
  // Leaks can't be looked for behind the helper's wall.
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  setenv("DITTO", DITTO_PROGRAM, 1);
  std::string outName = (fs::temp_directory_path() / "ziptest-out-XXXXXX").string();
  std::string errName = (fs::temp_directory_path() / "ziptest-err-XXXXXX").string();
  close(mkstemp(outName.data()));
  close(mkstemp(errName.data()));
  const int status = std::system(("( " + line + " ) >" + outName + " 2>" + errName).c_str());
  Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), Read(outName),
                  Read(errName)};
  unlink(outName.c_str());
  unlink(errName.c_str());
  return outcome;
}

Outcome RunDitto(const std::vector<std::string>& arguments) {
  std::string line = "\"$DITTO\"";
  for (const std::string& argument : arguments) line += " '" + argument + "'";
  return RunShell(line);
}

bool HasProgram(const std::string& name) {
  return RunShell("command -v " + name).status == 0;
}

}  // namespace ziptest
