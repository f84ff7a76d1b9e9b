// SPDX-License-Identifier: MIT
// Lists of choices and of options: items separated by "|", the fields of an item by ",". There is no
// escape, and blanks belong to their field.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// As many controls as a dialog has.
inline constexpr std::size_t kMostItems = 10;

/// A field that an item doesn't have is empty.
struct ListItem {
  std::string name;    // the caption, and the key by which an answer finds its item
  std::string source;  // an archive's file name, or an address
  std::string target;  // a folder inside the target folder; see PlanItem
  std::string tip;
  bool operator==(const ListItem&) const = default;
};

/// The first kMostItems items; none for an empty list.
std::vector<ListItem> ParseItems(std::string_view list);

/// Can it be a field? It holds neither separator.
bool FitsItem(std::string_view field);

/// The list that ParseItems reads `items` from; all of their fields fit.
std::string JoinItems(const std::vector<ListItem>& items);

/// The item of that name, ignoring case: the last one, if several bear it.
std::optional<ListItem> ChosenItem(const std::vector<ListItem>& items, const std::string& name);

/// Those whose names are among `names`, which are separated by ",", in the order of the list.
std::vector<ListItem> SelectedItems(const std::vector<ListItem>& items, const std::string& names);

/// Of an option's source: does it begin with "http", in any case?
bool IsWebSource(std::string_view source);
