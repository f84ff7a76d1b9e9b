// SPDX-License-Identifier: MIT
#include "platform/Brake.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>

#include "base/MountPoint.h"
#include "platform/LiesIn.h"

namespace {

std::string Resolved(const std::string& path) {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
  return error ? path : resolved.string();
}

/// The folders that the user's directories file names; see xdg-user-dirs.
void AddUserFolders(const std::string& home, KeptFolders& folders) {
  for (const char* name :
       {"Applications", "Desktop", "Documents", "Downloads", "Music", "Pictures", "Public", "Templates",
        "Videos", ".config", ".local", ".local/share", ".local/bin", ".cache"})
    folders.Add(home + "/" + name);
  const char* config = std::getenv("XDG_CONFIG_HOME");
  std::ifstream file((config != nullptr ? config : home + "/.config") + "/user-dirs.dirs");
  for (std::string line; std::getline(file, line);) {
    const std::size_t open = line.find('"'), close = line.rfind('"');
    if (!line.starts_with("XDG_") || open == close) continue;
    const std::string folder = line.substr(open + 1, close - open - 1);
    folders.Add(folder.starts_with("$HOME") ? home + folder.substr(5) : folder);
  }
}

}  // namespace

bool IsFolderOfTheSystem(const std::string& place) {
  static const std::set<std::string_view> kRoot{
      "bin",   "boot", "dev", "etc",          "home",    "lib",    "lib32", "lib64",  "libx32",
      "media", "mnt",  "opt", "proc",         "root",    "run",    "sbin",  "srv",    "sys",
      "tmp",   "usr",  "var", "Applications", "Library", "System", "Users", "Volumes"};
  static const std::set<std::string_view> kInner{
      "bin",  "cache", "etc",  "games", "include", "lib", "lib32", "lib64", "libexec", "libx32", "local",
      "lock", "log",   "mail", "man",   "opt",     "run", "sbin",  "share", "spool",   "src",    "tmp"};
  const std::size_t slash = place.rfind('/');
  const std::string_view name = std::string_view(place).substr(slash + 1);
  const std::string parent = place.substr(0, slash);
  if (parent.empty()) return kRoot.contains(name);
  return (parent == "/usr" || parent == "/usr/local" || parent == "/var") && kInner.contains(name);
}

void KeptFolders::Add(const std::string& path) {
  if (!path.starts_with('/')) return;
  const std::string plain = path.substr(0, path.find_last_not_of('/') + 1);
  if (plain.empty()) return;
  fPaths.push_back(plain);
  const std::string resolved = Resolved(plain);
  if (resolved != plain && resolved != "/") fPaths.push_back(resolved);
}

void KeptFolders::AddEverybodys() {
  constexpr uid_t kFirstPerson =
      1000;  // below are the accounts of services; their homes are all over the disk
  Add("/Applications");
  for (const char* variable : {"HOME", "TMPDIR"})
    if (const char* folder = std::getenv(variable)) Add(folder);
  if (const char* home = std::getenv("HOME")) AddUserFolders(home, *this);
  ::setpwent();
  while (const passwd* user = ::getpwent())
    if (user->pw_uid >= kFirstPerson || user->pw_uid == 0 || user->pw_uid == ::getuid()) Add(user->pw_dir);
  ::endpwent();
}

bool KeptFolders::IsOrHolds(const std::string& path) const {
  return std::any_of(fPaths.begin(), fPaths.end(),
                     [&path](const std::string& kept) { return LiesIn(kept, path); });
}

std::string ReasonToStay(const std::string& path, const KeptFolders& kept) {
  if (!path.starts_with('/')) return "it is no item that can be removed";
  struct stat item {};
  if (::lstat(path.c_str(), &item) != 0) return "";
  const std::string name = path.substr(path.rfind('/') + 1);
  if (name.empty() || name == "." || name == "..") return "it is no item that can be removed";
  // The way to the item may lead through links; the item itself is removed as what it is.
  const std::string folder = Resolved(path.substr(0, path.rfind('/') + 1));
  const std::string place = (folder == "/" ? "" : folder) + "/" + name;
  if (kept.IsOrHolds(path) || kept.IsOrHolds(place)) return "it is or holds what must stay";
  if (!S_ISREG(item.st_mode) && IsFolderOfTheSystem(place)) return "it is a folder of the system's";
  if (IsMountPoint(AT_FDCWD, path.c_str())) return "it is a mounted file system";
  if (!S_ISDIR(item.st_mode)) return "";
  const std::vector<std::string> mounted = MountPoints();
  const bool holds = std::any_of(mounted.begin(), mounted.end(),
                                 [&place](const std::string& point) { return LiesIn(point, place); });
  return holds ? "a file system is mounted in it" : "";
}
