// SPDX-License-Identifier: MIT
#include "choices/ItemList.h"

#include <algorithm>
#include <iterator>

#include "util/Strings.h"

std::vector<ListItem> ParseItems(std::string_view list) {
  std::vector<ListItem> items;
  if (list.empty()) return items;
  for (const std::string_view row : ViewConst::SplitFields(list, "|", kMostItems)) {
    const std::vector<std::string_view> fields = ViewConst::SplitFields(row, ",", 4);
    const auto field = [&fields](std::size_t index) {
      return std::string(index < fields.size() ? fields[index] : "");
    };
    items.push_back({field(0), field(1), field(2), field(3)});
  }
  return items;
}

bool FitsItem(std::string_view field) {
  return field.find_first_of("|,") == std::string_view::npos;
}

std::string JoinItems(const std::vector<ListItem>& items) {
  std::string list;
  for (const ListItem& item : items)
    list += (list.empty() ? "" : "|") + item.name + "," + item.source + "," + item.target + "," + item.tip;
  return list;
}

std::optional<ListItem> ChosenItem(const std::vector<ListItem>& items, const std::string& name) {
  const auto found = std::find_if(items.rbegin(), items.rend(), [&name](const ListItem& item) {
    return ViewConst::NonCaseMatch(item.name, name);
  });
  return found == items.rend() ? std::nullopt : std::optional(*found);
}

std::vector<ListItem> SelectedItems(const std::vector<ListItem>& items, const std::string& names) {
  std::vector<ListItem> selected;
  std::copy_if(items.begin(), items.end(), std::back_inserter(selected),
               [&names](const ListItem& item) { return ViewConst::FindField(names, ",", item.name) != 0; });
  return selected;
}

bool IsWebSource(std::string_view source) {
  return ViewConst::FindText(source, "http", 0) == 0;
}
