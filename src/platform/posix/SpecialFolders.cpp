// SPDX-License-Identifier: MIT
#include "platform/posix/SpecialFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/LiesIn.h"

namespace {

std::string FileText(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string Unquoted(std::string value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
    return value.substr(1, value.size() - 2);
  return value;
}

/// The value of a shell-like NAME=value line, or empty.
std::string Setting(const std::string& text, const std::string& name) {
  std::istringstream lines(text);
  std::string value;
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(name + "=")) value = Unquoted(line.substr(name.size() + 1));
  return value;
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

std::uint64_t OnlineMemory() {
  const std::string root = "/sys/devices/system/memory/";
  const std::string size = FileText(root + "block_size_bytes");
  std::uint64_t block = 0;
  std::from_chars(size.data(), size.data() + size.size(), block, 16);
  std::uint64_t online = 0;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(root, error))
    if (entry.path().filename().string().starts_with("memory") &&
        FileText(entry.path().string() + "/state").starts_with("online"))
      ++online;
  return online * block;
}

bool ParseSystemVersion(const std::string& release, long long& major, long long& minor) {
  const std::string version = Setting(release, "VERSION_ID");
  const char* end = version.data() + version.size();
  const auto first = std::from_chars(version.data(), end, major);
  if (first.ec != std::errc()) return false;
  minor = 0;
  if (first.ptr != end && *first.ptr == '.') std::from_chars(first.ptr + 1, end, minor);
  return true;
}

bool ReadSystemVersion(long long& major, long long& minor) {
  const std::string own = FileText("/etc/os-release");
  return ParseSystemVersion(own.empty() ? FileText("/usr/lib/os-release") : own, major, minor);
}
