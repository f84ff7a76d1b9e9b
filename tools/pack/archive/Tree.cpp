// SPDX-License-Identifier: MIT
// The walk over a folder.
#include "pack/archive/Tree.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

#include "pack/Refusal.h"
#include "pack/Text.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 65535;  // what its length in a header can say

struct stat FactsOf(const fs::path& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0)
    throw fs::filesystem_error("lstat", path, std::error_code(errno, std::generic_category()));
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
    item.size = static_cast<std::uint64_t>(facts.st_size);
  } else {
    throw Refusal(field, "holds something that is no file, folder or link: " + path.string());
  }
  if (item.name.size() > kLongestName)
    throw Refusal(field, "holds a path that is too long for an archive: " + path.string());
  if (!DecodeUtf8(item.name)) throw Refusal(field, "holds a name that is no UTF-8 text: " + path.string());
  item.mode = facts.st_mode & (S_IFMT | 0777);
  item.modified = facts.st_mtim;
  item.stated = std::min<std::time_t>(facts.st_mtim.tv_sec, LatestTime());
  return item;
}

void AddContent(const std::string& field, const fs::path& folder, const std::string& prefix,
                std::vector<TreeItem>& to) {
  for (const auto& entry : fs::directory_iterator(folder)) {
    to.push_back(MakeItem(field, prefix + entry.path().filename().string(), entry.path()));
    const std::string name = to.back().name;
    if (to.back().kind == Kind::kFolder) AddContent(field, entry.path(), name, to);
  }
}

}  // namespace

std::vector<TreeItem> ListTree(const std::string& field, const fs::path& folder, const std::string& top) {
  std::vector<TreeItem> items;
  if (!top.empty()) items.push_back(MakeItem(field, top, folder / "."));
  AddContent(field, folder, top.empty() ? "" : top + "/", items);
  std::sort(items.begin(), items.end(), [](const TreeItem& a, const TreeItem& b) { return a.name < b.name; });
  return items;
}

}  // namespace pack
