// SPDX-License-Identifier: MIT
// What the lists say, and where each item goes.
#include <gtest/gtest.h>

#include <set>

#include "choices/ItemList.h"
#include "choices/ItemPlace.h"
#include "choices/MergeStaging.h"
#include "support/TestMachine.h"

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
      {"case tells folders apart", "sub", "/a/Tools/sub", ""},
      {"a folder in a folder", "Sub/New", "/a/Tools/Sub/New", ""},
      {"nothing said", "", "/a/Tools/_X", "/a/Tools/"},
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

TEST(MergeStaging, GoesFromTheLastItemToTheFirstAndIntoLockedFolders) {
  const TemporaryTree tree;
  const OrdinaryUser user(tree.Path());
  TestMachine machine(tree);
  std::string told, expected;
  const auto merge = [&](const std::string& folder) {
    for (const char* name : {"staging/a", "staging/b", "staging/c"}) tree.Write(name, "new");
    for (const FolderItem& item : FolderItem(tree.Path("staging")).Children())
      expected = "/" + folder + "/" + item.Name() + expected;
    MergeStaging({tree.Path("staging"), tree.Path(folder)},
                 [&](const std::string& path) { told += path.substr(tree.Path().size()); });
    EXPECT_FALSE(tree.Has("staging"));
  };
  merge("none");
  EXPECT_EQ(told, expected) << "as the folder lists them, backwards";
  tree.Write("locked/b", "old");
  fs::permissions(tree.Path("locked"), fs::perms(0400));
  told.clear();
  merge("locked");
  EXPECT_EQ(told, "");
  EXPECT_EQ(FolderItem(tree.Path("locked")).Permissions(), 0400U);
  fs::permissions(tree.Path("locked"), fs::perms(0700));
  EXPECT_EQ(tree.Look("locked").size(), 3U);
  EXPECT_EQ(tree.Read("locked/b"), "new");
}
