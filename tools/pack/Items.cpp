// SPDX-License-Identifier: MIT
// Choices and options, and the archives and folders that they name.
#include <algorithm>
#include <array>
#include <utility>

#include "choices/ItemList.h"
#include "engine/Target.h"
#include "pack/Addresses.h"
#include "pack/DescriptionParts.h"
#include "pack/Refusal.h"
#include "pack/Text.h"
#include "util/Paths.h"
#include "util/Places.h"
#include "util/Strings.h"

namespace pack {
namespace {

using nlohmann::json;

constexpr std::size_t kLongestName = 255;  // of a file, in bytes

// One of three names; the first one's meaning where the key is absent.
template <typename Value>
Value Named(Section& section, const std::string& key,
            const std::array<std::pair<const char*, Value>, 3>& known) {
  const std::string list =
      std::string("\"") + known[0].first + "\", \"" + known[1].first + "\" or \"" + known[2].first + "\"";
  const std::string word =
      section.Word(key, {known[0].first, known[1].first, known[2].first}, "must be " + list);
  for (const auto& [name, meaning] : known) {
    if (LowerAscii(word) == name) return meaning;
  }
  return known[0].second;
}

// The address of an option's archive, which is put down under the name at its end.
void ReadAddress(Section& section, Item& item) {
  if (item.archive.Given()) section.Refuse("url", "can't stand beside an archive");
  item.source = section.Text("url");
  const std::string name = ViewConst::ExtractFileName(item.source);
  if (!IsWebAddress(item.source) || !ViewConst::IsInnerName(name) || name.size() > kLongestName)
    section.Refuse("url", "must be an http address that ends in a file's name");
}

// Archives are stored under names of our own, which hold no comma and can't be taken for an address.
Item ReadItem(Section section, bool option, const std::string& archiveName) {
  Item item;
  item.name = section.Text("name");
  item.target = section.Text("target");
  item.tip = section.Text("tip");
  item.archive = ReadSource(section);
  item.source = item.archive.Given() ? archiveName : "";
  if (item.name.empty()) section.Refuse("name", "is missing");
  if (!item.target.empty() && !IsTargetName(item.target))
    section.Refuse(
        "target",
        "must name a folder inside the target folder, without \".\", \"..\", a \"/\" at an end and "
        "control characters");
  const bool web = option && section.Find("url") != nullptr;
  if (web) ReadAddress(section, item);
  if (!web && section.Find("folder") == nullptr && section.Find("zip") == nullptr)
    section.Refuse("folder", option ? "is missing, and so are zip and url" : "is missing, and so is zip");
  section.Finish();
  for (const auto& [key, value] : {std::pair{"name", &item.name}, std::pair{"url", &item.source},
                                   std::pair{"target", &item.target}, std::pair{"tip", &item.tip}})
    if (!FitsItem(*value)) section.Refuse(key, "can't hold a comma or \"|\"");
  return item;
}

}  // namespace

Source ReadSource(Section& section) {
  const bool folder = section.Find("folder") != nullptr;
  Source source{section.Directory("folder"), section.File("zip"), {}};
  if (folder && section.Find("zip") != nullptr) section.Refuse("zip", "can't stand beside a folder");
  for (const char* key : {"compression", "level"}) {
    if (!folder && section.Find(key) != nullptr)
      section.Refuse(key, "can't stand without a folder, which is all that it counts for");
  }
  source.compression.method =
      Named<Method>(section, "compression",
                    {{{"solid", Method::kSolid}, {"deflate", Method::kDeflate}, {"store", Method::kStore}}});
  if (source.compression.method == Method::kStore && section.Find("level") != nullptr)
    section.Refuse("level", "can't stand beside \"store\", which compresses nothing");
  source.compression.level = Named<Level>(
      section, "level", {{{"normal", Level::kNormal}, {"fast", Level::kFast}, {"best", Level::kBest}}});
  return source;
}

std::vector<Item> ReadItems(Section& section, const std::string& key, bool option) {
  std::vector<Item> items;
  const json* list = section.Find(key);
  if (list == nullptr) return items;
  if (!list->is_array()) section.Refuse(key, "must be a list of items");
  if (!list->is_array()) return items;
  if (list->size() > kMostItems)
    section.Refuse(key, "has more than ten items, which is all that fit on the screen");
  for (const json& row : *list) {
    if (!row.is_object()) section.Refuse(key, "must hold objects, one for each item");
    if (!row.is_object()) break;
    const std::string field = key + "[" + std::to_string(items.size()) + "]";
    const std::string archive = (option ? "Option" : "Choice") + std::to_string(items.size() + 1) + ".zip";
    items.push_back(ReadItem(section.Inner(field, row), option, archive));
    // The user's answer comes back as names.
    const std::string& name = items.back().name;
    const bool taken =
        !name.empty() && std::any_of(items.begin(), items.end() - 1, [&name](const Item& earlier) {
          return ViewConst::NonCaseMatch(earlier.name, name);
        });
    if (taken) section.Refuse(field + ".name", "is the name of an earlier item");
  }
  return items;
}

}  // namespace pack
