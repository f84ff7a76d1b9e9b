// SPDX-License-Identifier: MIT
#include "cleanup/Order.h"

#include <pwd.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

namespace {

bool IsPlainElement(std::string_view element) {
  return !element.empty() && element != "." && element != "..";
}

std::string Resolved(const std::string& path) {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
  return error ? path : resolved.string();
}

bool IsMounted(const std::string& path) {
  struct stat item {};
  struct stat parent {};
  const std::string folder = path.substr(0, path.rfind('/')) + "/.";
  return ::lstat(path.c_str(), &item) != 0 || ::stat(folder.c_str(), &parent) != 0 ||
         (S_ISDIR(item.st_mode) && item.st_dev != parent.st_dev);
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

std::vector<std::string> HomeFolders() {
  std::vector<std::string> homes;
  if (const char* home = std::getenv("HOME")) homes.emplace_back(home);
  ::setpwent();
  while (const passwd* user = ::getpwent()) homes.emplace_back(user->pw_dir);
  ::endpwent();
  return homes;
}

std::string Objection(const std::string& path, const std::vector<std::string>& homes) {
  if (path.empty() || path == "/") return "it is no item that can be removed";
  // The way to the item may lead through links; the item itself is removed as what it is.
  const std::string place = Resolved(path.substr(0, path.rfind('/') + 1)) + path.substr(path.rfind('/'));
  for (const std::string& home : homes) {
    if (home.size() < 2 || home.front() != '/') continue;
    if ((Resolved(home) + "/").starts_with(place + "/")) return "it is or holds a home folder";
  }
  if (IsMounted(path)) return "it is missing, or a mounted file system";
  return "";
}
