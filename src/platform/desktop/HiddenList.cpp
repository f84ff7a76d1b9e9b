// SPDX-License-Identifier: MIT
// A list is short: it is read whole and written anew beside itself.
#include "platform/desktop/HiddenList.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <sstream>
#include <vector>

#include "base/Descriptor.h"
#include "base/WriteAll.h"

namespace {

constexpr std::size_t kLongestList = 1U << 20;

/// None for a list that can't be read, is no file, or is too long: it is the user's, and stays as it is.
std::optional<std::vector<std::string>> ReadList(const std::string& folder) {
  const Descriptor file(
      ::open((folder + "/.hidden").c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  std::vector<std::string> names;
  if (!file) return errno == ENOENT ? std::optional(names) : std::nullopt;
  std::string text;
  char buffer[4096];
  ssize_t got = 0;
  while (text.size() < kLongestList && (got = ::read(file.Get(), buffer, sizeof buffer)) > 0)
    text.append(buffer, static_cast<std::size_t>(got));
  if (got < 0 || text.size() >= kLongestList) return std::nullopt;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    if (!line.empty()) names.push_back(line);
  return names;
}

bool WriteList(const std::string& folder, const std::vector<std::string>& names) {
  const std::string path = folder + "/.hidden";
  if (names.empty()) return ::unlink(path.c_str()) == 0;
  std::string text;
  for (const std::string& name : names) text += name + "\n";
  std::string fresh = folder + "/.hidden.XXXXXX";
  const Descriptor file(::mkostemp(fresh.data(), O_CLOEXEC));
  if (!file) return false;
  const bool written = WriteAll(file.Get(), text.data(), text.size()) && ::fchmod(file.Get(), 0644) == 0;
  if (written && ::rename(fresh.c_str(), path.c_str()) == 0) return true;
  ::unlink(fresh.c_str());
  return false;
}

}  // namespace

bool IsListedHidden(const std::string& folder, const std::string& name) {
  const std::vector<std::string> names = ReadList(folder).value_or(std::vector<std::string>());
  return std::find(names.begin(), names.end(), name) != names.end();
}

void ListHidden(const std::string& folder, const std::string& name, bool hidden) {
  if (name.empty() || name.find('\n') != std::string::npos) return;
  std::optional<std::vector<std::string>> names = ReadList(folder);
  if (!names) return;
  const auto at = std::find(names->begin(), names->end(), name);
  if ((at != names->end()) == hidden) return;
  if (hidden)
    names->push_back(name);
  else
    names->erase(at);
  static_cast<void>(WriteList(folder, *names));
}
