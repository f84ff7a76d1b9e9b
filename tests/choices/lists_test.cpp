// SPDX-License-Identifier: MIT
// What the lists say, and where each item goes.
#include <gtest/gtest.h>

#include <set>

#include "choices/ItemList.h"
#include "choices/ItemPlace.h"

using Rows = std::vector<ListItem>;

TEST(ItemList, FieldsAreTakenAsTheyStandAndAnswersFindTheirItems) {
  const std::pair<const char*, Rows> rows[] = {
      {"", {}},
      {" A b , x/y.zip ,T/U,tip|", {{" A b ", " x/y.zip ", "T/U", "tip"}, {}}},
      {"a,b,c,d,e,f|,,,t", {{"a", "b", "c", "d"}, {"", "", "", "t"}}},
  };
  for (const auto& [list, items] : rows) EXPECT_EQ(ParseItems(list), items) << list;
  EXPECT_EQ(ParseItems("1|2|3|4|5|6|7|8|9|10|11|12").size(), 10U);
  const Rows items = ParseItems("One,1|two,2|ONE,3|,4");
  EXPECT_EQ(ChosenItem(items, "one")->source, "3") << "the last one of that name";
  EXPECT_FALSE(ChosenItem(items, "three"));
  const auto sources = [&items](const std::string& names) {
    std::string all;
    for (const ListItem& item : SelectedItems(items, names)) all += item.source;
    return all;
  };
  EXPECT_EQ(sources("TWO,one"), "123");
  EXPECT_EQ(sources("tw") + sources("two ") + sources(""), "");
  for (const char* source : {"http://x", "HTTPS://x", "httpd.zip"}) EXPECT_TRUE(IsWebSource(source));
  for (const char* source : {"", " http://x", "x/http", "htt"}) EXPECT_FALSE(IsWebSource(source));
}

TEST(ItemPlace, StandsBesideWhatExistsAndNowhereElse) {
  const std::set<std::string> folders = {"/a/Tools", "/a/Tools/", "/a/Tools/Sub", "/a/Tools/Sub/"};
  const char* const rows[][4] = {
      {"the target folder itself", "Tools", "/a/Tools_X", "/a/Tools"},
      {"in any case", "tOOLS", "/a/Tools_X", "/a/Tools"},
      {"a folder that is there", "Sub", "/a/Tools/Sub_X", "/a/Tools/Sub"},
      {"a new folder", "New", "/a/Tools/New", ""},
      {"a closing separator", "Sub/", "/a/Tools/Sub/_X", "/a/Tools/Sub/"},
  };
  const auto isFolder = [&folders](const std::string& path) { return folders.contains(path); };
  for (const auto& [why, target, expansion, merge] : rows) {
    const std::optional<ItemPlace> place = PlanItem("/a/Tools", target, "_X", isFolder);
    ASSERT_TRUE(place) << why;
    EXPECT_EQ(place->expansionFolder + " " + place->mergeFolder, std::string(expansion) + " " + merge) << why;
    EXPECT_EQ(place->Staged(), *merge != '\0') << why;
  }
  for (const char* target : {"..", ".", "../Tools", "Sub/../..", "/a", "/", "Sub//New", "a\nb"})
    EXPECT_FALSE(PlanItem("/a/Tools", target, "_X", [](const auto&) { return true; })) << target;
}
