// SPDX-License-Identifier: MIT
#include "cleanup/Order.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/posix/MountPoint.h"

namespace {

bool IsPlainElement(std::string_view element) {
  return !element.empty() && element != "." && element != "..";
}

std::string Resolved(const std::string& path) {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
  return error ? path : resolved.string();
}

bool IsOrHolds(const std::string& folder, const std::string& item) {
  return (item + "/").starts_with(folder + "/");
}

/// The system's own folders: those in the root, and what makes up their first level.
bool IsOfTheSystem(const std::string& place) {
  const std::filesystem::path path(place);
  const std::string parent = path.parent_path().string();
  return parent == "/" || parent == "/usr" || parent == "/var" || parent == "/usr/local";
}

/// The folders that the user's directories file names; see xdg-user-dirs.
void AddUserFolders(const std::string& home, std::vector<std::string>& folders) {
  for (const char* name : {"Applications", "Desktop", "Documents", "Downloads", "Music", "Pictures", "Public",
                           "Templates", "Videos", ".config", ".local", ".local/share", ".cache"})
    folders.push_back(home + "/" + name);
  const char* config = std::getenv("XDG_CONFIG_HOME");
  std::ifstream file((config != nullptr ? config : home + "/.config") + "/user-dirs.dirs");
  for (std::string line; std::getline(file, line);) {
    const std::size_t open = line.find('"'), close = line.rfind('"');
    if (!line.starts_with("XDG_") || open == close) continue;
    std::string folder = line.substr(open + 1, close - open - 1);
    if (folder.starts_with("$HOME")) folder = home + folder.substr(5);
    folders.push_back(folder);
  }
}

}  // namespace

std::string PathOfOrder(std::string_view order) {
  std::string_view path;
  for (const std::string_view key : {"DeleteFile=", "DeleteFolder="})
    if (order.starts_with(key)) path = order.substr(key.size());
  if (!path.starts_with('/')) return "";
  for (std::string_view rest = path; !rest.empty();) {
    rest.remove_prefix(1);
    const std::string_view element = rest.substr(0, rest.find('/'));
    if (!IsPlainElement(element)) return "";
    rest.remove_prefix(element.size());
  }
  return std::string(path);
}

std::vector<std::string> KeptFolders() {
  std::vector<std::string> folders{"/Applications"};
  const char* home = std::getenv("HOME");
  const char* temporary = std::getenv("TMPDIR");
  const passwd* self = ::getpwuid(::getuid());
  if (home != nullptr) AddUserFolders(home, folders);
  for (const char* folder :
       {home, temporary, self != nullptr ? static_cast<const char*>(self->pw_dir) : home})
    if (folder != nullptr) folders.emplace_back(folder);
  ::setpwent();
  while (const passwd* user = ::getpwent()) folders.emplace_back(user->pw_dir);
  ::endpwent();
  return folders;
}

std::string Objection(const std::string& path, const std::vector<std::string>& kept) {
  if (path.empty() || path == "/") return "it is no item that can be removed";
  struct stat item {};
  if (::lstat(path.c_str(), &item) != 0) return "it is missing";
  // The way to the item may lead through links; the item itself is removed as what it is.
  const std::string place = Resolved(path.substr(0, path.rfind('/') + 1)) + path.substr(path.rfind('/'));
  for (std::string folder : kept) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    if (folder.size() < 2 || folder.front() != '/') continue;
    if (IsOrHolds(path, folder) || IsOrHolds(place, folder) || IsOrHolds(place, Resolved(folder)))
      return "it is or holds a folder of the user's";
  }
  if (IsOfTheSystem(place)) return "it is a folder of the system's";
  if (IsMountPoint(AT_FDCWD, path.c_str())) return "it is a mounted file system";
  return "";
}
