// SPDX-License-Identifier: MIT
// By what names tell, and then by what the content tells.
#include "pack/archive/Order.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

#include "pack/archive/Likeness.h"

namespace pack {
namespace {

enum Group { kFolders, kLinks, kFiles, kDense };

struct Key {
  Group group;
  std::string_view extension, name, path;
  std::size_t index;
  bool operator<(const Key& other) const {
    return std::tie(group, extension, name, path) <
           std::tie(other.group, other.extension, other.name, other.path);
  }
};

Key KeyOf(const TreeItem& item, bool dense, std::size_t index) {
  const std::string_view path = item.name;
  if (item.kind == Kind::kFolder) return {kFolders, {}, {}, path, index};
  if (item.kind == Kind::kLink) return {kLinks, {}, {}, path, index};
  const std::string_view name = path.substr(path.rfind('/') + 1);  // the whole path where there is none
  const std::size_t dot = name.rfind('.');
  const bool extended = dot != std::string_view::npos && dot != 0;
  return {dense ? kDense : kFiles, extended ? name.substr(dot) : std::string_view(), name, path, index};
}

// Of files from `first` on and before `behind`, which are in the order of their names. Each is to be found by
// what it shares with the frame that is being filled: what lies in an earlier one is out of reach.
void SortByLikeness(std::vector<Key>::iterator first, std::vector<Key>::iterator behind,
                    const std::vector<TreeItem>& items, std::vector<Sketch>& sketches,
                    std::size_t frameSize) {
  constexpr std::uint64_t kHeader = 64;  // about
  const std::vector<Key> files(first, behind);
  std::vector<Likeness::Marks> marks;
  for (const Key& key : files) marks.push_back(std::move(sketches[key.index].marks));
  Likeness likeness(std::move(marks));
  std::uint64_t inFrame = 0;
  std::size_t named = 0;
  for (auto to = first; to != behind; ++to) {
    while (named < files.size() && likeness.IsPlaced(named)) ++named;
    const std::size_t next = likeness.Next().value_or(named);
    *to = files[next];
    inFrame += kHeader + items[files[next].index].size;
    if (inFrame >= frameSize) likeness.Forget();
    inFrame %= frameSize;
    likeness.Place(next);
  }
}

}  // namespace

std::size_t SortForSolid(std::vector<TreeItem>& items, std::vector<Sketch> sketches, std::size_t frameSize) {
  std::vector<Key> keys;
  keys.reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) keys.push_back(KeyOf(items[i], sketches[i].dense, i));
  std::sort(keys.begin(), keys.end());
  const auto begins = [&keys](Group group) {
    return std::partition_point(keys.begin(), keys.end(),
                                [group](const Key& key) { return key.group < group; });
  };
  const auto dense = begins(kDense);
  SortByLikeness(begins(kFiles), dense, items, sketches, frameSize);
  // The keys' names lie in the items.
  std::vector<TreeItem> sorted;
  sorted.reserve(items.size());
  for (const Key& key : keys) sorted.push_back(std::move(items[key.index]));
  items = std::move(sorted);
  return static_cast<std::size_t>(dense - keys.begin());
}

}  // namespace pack
