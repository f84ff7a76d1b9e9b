// SPDX-License-Identifier: MIT
// Names of the labels, and how a description gives them.
#include "pack/Labels.h"

#include <algorithm>
#include <cstddef>
#include <set>

#include "pack/Nearest.h"
#include "pack/Refusal.h"
#include "pack/Section.h"
#include "package/Labels.h"

namespace pack {
namespace {

using nlohmann::json;

std::size_t IndexOf(const std::string& key) {
  std::vector<std::string> names;
  for (const NamedLabel& label : NamedLabels()) {
    if (key == label.name) return static_cast<std::size_t>(label.id);
    names.emplace_back(label.name);
  }
  for (std::size_t i = 0; i < kMostLabels; ++i) {
    if (key == std::to_string(i)) return i;
  }
  throw Refusal("labels." + key, "is no label's name and no index from 0 to 26" + DidYouMean(key, names));
}

}  // namespace

std::vector<std::string> ReadLabels(const json& json, Problems& problems) {
  std::vector<std::string> labels;
  if (json.is_array()) {
    if (json.size() > kMostLabels) problems.Add("labels", "has more than 27 texts");
    labels.resize(std::min(json.size(), kMostLabels));
    for (std::size_t i = 0; i < labels.size(); ++i)
      problems.Try([&] { labels[i] = TextOf(json[i], "labels[" + std::to_string(i) + "]"); });
    return labels;
  }
  if (!json.is_object()) problems.Add("labels", "must be a list or an object");
  if (!json.is_object()) return labels;
  std::set<std::size_t> given;
  for (const auto& row : json.items()) {
    problems.Try([&] {
      const std::size_t index = IndexOf(row.key());
      const std::string name = "labels." + row.key();
      if (!given.insert(index).second) throw Refusal(name, "is given both by name and by index");
      labels.resize(std::max(labels.size(), index + 1));
      labels[index] = TextOf(row.value(), name);
    });
  }
  return labels;
}

}  // namespace pack
