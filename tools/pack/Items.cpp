// SPDX-License-Identifier: MIT
// Choices and options, and the archives and folders that they name.
#include <algorithm>
#include <array>
#include <utility>

#include "choices/ItemList.h"
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
  const json* value = section.Find(key);
  if (value == nullptr) return known[0].second;
  for (const auto& [name, meaning] : known) {
    if (*value == name) return meaning;
  }
  throw Refusal(section.Name(key), std::string("must be \"") + known[0].first + "\", \"" + known[1].first +
                                       "\" or \"" + known[2].first + "\"");
}

// Archives are stored under names of our own, which hold no comma and can't be taken for an address.
Item ReadItem(Section section, bool option, const std::string& archiveName) {
  Item item;
  item.name = section.Text("name");
  item.target = section.Text("target");
  item.tip = section.Text("tip");
  item.archive = ReadSource(section);
  item.source = item.archive.Given() ? archiveName : "";
  if (item.name.empty()) throw Refusal(section.Name("name"), "is missing");
  if (!item.target.empty()) CheckFolderName(section.Name("target"), item.target);
  if (option && section.Find("url") != nullptr) {
    if (item.archive.Given()) throw Refusal(section.Name("url"), "can't stand beside an archive");
    item.source = section.Text("url");
    const std::string address = LowerAscii(item.source);
    const std::string name = ViewConst::ExtractFileName(item.source);
    if ((!address.starts_with("http://") && !address.starts_with("https://")) ||
        !ViewConst::IsInnerName(name) || name.size() > kLongestName)
      throw Refusal(section.Name("url"), "must be an http address that ends in a file's name");
  }
  section.Finish();
  for (const auto& [key, value] : {std::pair{"name", &item.name}, std::pair{"url", &item.source},
                                   std::pair{"target", &item.target}, std::pair{"tip", &item.tip}})
    if (!FitsItem(*value)) throw Refusal(section.Name(key), "can't hold a comma or \"|\"");
  if (item.source.empty())
    throw Refusal(section.Name("folder"),
                  option ? "is missing, and so are zip and url" : "is missing, and so is zip");
  return item;
}

}  // namespace

Source ReadSource(Section& section) {
  Source source{section.Directory("folder"), section.File("zip"), {}};
  if (!source.folder.empty() && !source.zip.empty())
    throw Refusal(section.Name("zip"), "can't stand beside a folder");
  for (const char* key : {"compression", "level"}) {
    if (source.folder.empty() && section.Find(key) != nullptr)
      throw Refusal(section.Name(key), "can't stand without a folder, which is all that it counts for");
  }
  source.compression.method =
      Named<Method>(section, "compression",
                    {{{"solid", Method::kSolid}, {"deflate", Method::kDeflate}, {"store", Method::kStore}}});
  if (source.compression.method == Method::kStore && section.Find("level") != nullptr)
    throw Refusal(section.Name("level"), "can't stand beside \"store\", which compresses nothing");
  source.compression.level = Named<Level>(
      section, "level", {{{"normal", Level::kNormal}, {"fast", Level::kFast}, {"best", Level::kBest}}});
  return source;
}

void CheckFolderName(const std::string& field, const std::string& name) {
  if (name.starts_with('/')) throw Refusal(field, "can't begin with \"/\"");
  if (std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }))
    throw Refusal(field, "can't hold a control character");
  for (std::size_t start = 0; start <= name.size();) {
    const std::size_t end = std::min(name.find('/', start), name.size());
    const std::string part = name.substr(start, end - start);
    if (part.empty() || part == "." || part == "..")
      throw Refusal(field, "can't have \"" + part + "\" as the name of a folder");
    start = end + 1;
  }
}

std::vector<Item> ReadItems(Section& section, const std::string& key, bool option) {
  std::vector<Item> items;
  const json* list = section.Find(key);
  if (list == nullptr) return items;
  if (!list->is_array()) throw Refusal(key, "must be a list of items");
  if (list->size() > kMostItems) throw Refusal(key, "has more than ten items");
  for (const json& row : *list) {
    const std::string field = key + "[" + std::to_string(items.size()) + "]";
    const std::string archive = (option ? "Option" : "Choice") + std::to_string(items.size() + 1) + ".zip";
    items.push_back(ReadItem(Section(row, field, section.Folder()), option, archive));
    // The user's answer comes back as names.
    const std::string& name = items.back().name;
    const bool taken = std::any_of(items.begin(), items.end() - 1, [&name](const Item& earlier) {
      return ViewConst::NonCaseMatch(earlier.name, name);
    });
    if (taken) throw Refusal(field + ".name", "is the name of an earlier item");
  }
  return items;
}

}  // namespace pack
