// SPDX-License-Identifier: MIT
#include "platform/desktop/SpecialFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/LiesIn.h"
#include "platform/posix/Settings.h"

namespace {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool IsOwnFolder(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() &&
         (info.st_mode & 077U) == 0;
}

}  // namespace

std::string UserHomeFolder() {
  const std::string home = Variable("HOME");
  if (home.starts_with('/')) return home;
  const passwd* entry = ::getpwuid(::getuid());
  return entry != nullptr && entry->pw_dir != nullptr ? entry->pw_dir : "/";
}

std::string ParseDesktopFolder(const std::string& userDirs, const std::string& home) {
  std::string folder = Setting(userDirs, "XDG_DESKTOP_DIR");
  if (folder.starts_with("$HOME")) folder = home + folder.substr(5);
  return folder.starts_with('/') ? folder : "";
}

std::string UserDesktopFolder() {
  const std::string home = UserHomeFolder();
  std::string config = Variable("XDG_CONFIG_HOME");
  if (config.empty()) config = home + "/.config";
  const std::string folder = ParseDesktopFolder(FileText(config + "/user-dirs.dirs"), home);
  return folder.empty() ? home + "/Desktop" : folder;
}

std::string PrivateTemporaryFolder(const std::string& program) {
  std::string parent = Variable("TMPDIR");
  if (!parent.starts_with('/')) parent = "/tmp";
  const std::string fixed = parent + "/tessarine-" + std::to_string(::geteuid());
  // A copy of the installer lies in the folder of the one that made it.
  if (LiesIn(program, fixed) || program.starts_with(fixed + "-")) {
    const std::string used = program.substr(0, program.find('/', fixed.size()));
    if (IsOwnFolder(used)) return used;
  }
  if (::mkdir(fixed.c_str(), S_IRWXU) == 0 || errno == EEXIST) {
    if (IsOwnFolder(fixed)) return fixed;
  }
  std::string fresh = fixed + "-XXXXXX";
  return ::mkdtemp(fresh.data()) == nullptr ? "" : fresh;
}

std::string ApplicationsParent() {
  struct stat info {};
  if (::stat("/Applications", &info) == 0 && S_ISDIR(info.st_mode)) return "/";
  return UserHomeFolder();
}
