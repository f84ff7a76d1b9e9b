// SPDX-License-Identifier: MIT
// Sorting by what names tell.
#include "pack/archive/Order.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

namespace pack {
namespace {

struct Key {
  int group;
  std::string_view extension, name, path;
  std::size_t index;
  bool operator<(const Key& other) const {
    return std::tie(group, extension, name, path) <
           std::tie(other.group, other.extension, other.name, other.path);
  }
};

Key KeyOf(const TreeItem& item, bool dense, std::size_t index) {
  enum { kFolders, kLinks, kFiles, kDense };
  const std::string_view path = item.name;
  if (item.kind == Kind::kFolder) return {kFolders, {}, {}, path, index};
  if (item.kind == Kind::kLink) return {kLinks, {}, {}, path, index};
  const std::string_view name = path.substr(path.rfind('/') + 1);  // the whole path where there is none
  const std::size_t dot = name.rfind('.');
  const bool extended = dot != std::string_view::npos && dot != 0;
  return {dense ? kDense : kFiles, extended ? name.substr(dot) : std::string_view(), name, path, index};
}

}  // namespace

std::size_t SortForSolid(std::vector<TreeItem>& items, const std::vector<bool>& dense) {
  std::vector<Key> keys;
  keys.reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) keys.push_back(KeyOf(items[i], dense[i], i));
  std::sort(keys.begin(), keys.end());
  std::vector<std::size_t> order;
  order.reserve(keys.size());
  for (const Key& key : keys) order.push_back(key.index);
  std::vector<TreeItem> sorted;
  sorted.reserve(items.size());
  for (const std::size_t index : order) sorted.push_back(std::move(items[index]));
  items = std::move(sorted);
  return items.size() - static_cast<std::size_t>(std::count(dense.begin(), dense.end(), true));
}

}  // namespace pack
