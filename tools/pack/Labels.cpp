// SPDX-License-Identifier: MIT
// Names of the labels, and how a description gives them.
#include "pack/Labels.h"

#include <algorithm>
#include <cstddef>
#include <set>

#include "pack/Refusal.h"
#include "pack/Section.h"
#include "package/Labels.h"

namespace pack {
namespace {

using nlohmann::json;

std::size_t IndexOf(const std::string& key) {
  for (const NamedLabel& label : NamedLabels()) {
    if (key == label.name) return static_cast<std::size_t>(label.id);
  }
  for (std::size_t i = 0; i < kMostLabels; ++i) {
    if (key == std::to_string(i)) return i;
  }
  throw Refusal("labels." + key, "is no label's name and no index from 0 to 26");
}

}  // namespace

std::vector<std::string> ReadLabels(const json& json) {
  std::vector<std::string> labels;
  if (json.is_array()) {
    if (json.size() > kMostLabels) throw Refusal("labels", "has more than 27 texts");
    for (const auto& text : json)
      labels.push_back(TextOf(text, "labels[" + std::to_string(labels.size()) + "]"));
    return labels;
  }
  if (!json.is_object()) throw Refusal("labels", "must be a list or an object");
  std::set<std::size_t> given;
  for (const auto& [key, text] : json.items()) {
    const std::size_t index = IndexOf(key);
    if (!given.insert(index).second) throw Refusal("labels." + key, "is given both by name and by index");
    labels.resize(std::max(labels.size(), index + 1));
    labels[index] = TextOf(text, "labels." + key);
  }
  return labels;
}

}  // namespace pack
