// SPDX-License-Identifier: MIT
// The walk over a folder.
#include "pack/archive/Tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

#include "archive/Result.h"
#include "base/Encoding.h"
#include "pack/Refusal.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 65535;  // what its length in a header can say

struct stat FactsOf(const fs::path& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0)
    throw Refusal(path.string(), "can't be looked at: " + std::generic_category().message(errno));
  return facts;
}

/// Nothing is said to be newer than $SOURCE_DATE_EPOCH, in seconds since 1970, where that is set: then the
/// same content makes the same bytes wherever and whenever it was copied.
std::time_t LatestTime() {
  const char* variable = std::getenv("SOURCE_DATE_EPOCH");
  if (variable == nullptr || *variable == '\0') return std::numeric_limits<std::time_t>::max();
  std::time_t latest = 0;
  const char* end = variable + std::strlen(variable);
  const auto [stopped, error] = std::from_chars(variable, end, latest);
  if (error != std::errc() || stopped != end)
    throw Refusal("SOURCE_DATE_EPOCH", "is no number of seconds: " + std::string(variable));
  return latest;
}

TreeItem MakeItem(const std::string& field, std::string name, const fs::path& path) {
  const struct stat facts = FactsOf(path);
  TreeItem item;
  item.name = std::move(name);
  item.path = path.string();
  if (S_ISDIR(facts.st_mode)) {
    item.kind = Kind::kFolder;
    item.name += "/";
  } else if (S_ISLNK(facts.st_mode)) {
    item.kind = Kind::kLink;
    item.target = fs::read_symlink(path).string();
  } else if (S_ISREG(facts.st_mode)) {
    if (::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) != 0)
      throw Refusal(field, "holds a file that can't be read: " + path.string());
    item.size = static_cast<std::uint64_t>(facts.st_size);
  } else {
    throw Refusal(field, "holds something that is no file, folder or link: " + path.string());
  }
  if (item.name.size() > kLongestName)
    throw Refusal(field, "holds a path that is too long for an archive: " + path.string());
  if (!IsUtf8(item.name))
    throw Refusal(field, "holds a name that is no UTF-8 text: " + archive::Quoted(path.string()));
  item.mode = facts.st_mode & (S_IFMT | 0777);
  item.modified = facts.st_mtim;
  item.stated = std::min<std::time_t>(facts.st_mtim.tv_sec, LatestTime());
  return item;
}

void AddContent(const std::string& field, const fs::path& folder, const std::string& prefix,
                std::vector<TreeItem>& to, Problems& problems) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path path = entry->path();
    TreeItem item;
    if (!problems.Try([&] { item = MakeItem(field, prefix + path.filename().string(), path); })) continue;
    to.push_back(item);
    if (item.kind == Kind::kFolder) AddContent(field, path, item.name, to, problems);
  }
  if (error) problems.Add(field, "holds a folder that can't be read: " + folder.string());
}

}  // namespace

std::vector<TreeItem> ListTree(const std::string& field, const fs::path& folder, const std::string& top,
                               Problems& problems) {
  std::vector<TreeItem> items;
  if (!top.empty() && !problems.Try([&] { items.push_back(MakeItem(field, top, folder / ".")); }))
    return items;
  AddContent(field, folder, top.empty() ? "" : top + "/", items, problems);
  std::sort(items.begin(), items.end(), [](const TreeItem& a, const TreeItem& b) { return a.name < b.name; });
  return items;
}

std::vector<TreeItem> ListTree(const std::string& field, const fs::path& folder, const std::string& top) {
  Problems problems;
  std::vector<TreeItem> items = ListTree(field, folder, top, problems);
  problems.ThrowFirst();
  return items;
}

}  // namespace pack
