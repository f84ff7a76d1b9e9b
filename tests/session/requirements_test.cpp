// SPDX-License-Identifier: MIT
// What a publisher may require of a machine, at the threshold.
#include "package/Requirements.h"

#include <gtest/gtest.h>

TEST(Requirements, AreMetAtTheirThreshold) {
  const std::tuple<std::string, int, int, bool> rows[] = {
      {"macos10.12", 10, 12, true}, {"MacOS10.12", 10, 11, false}, {"MacOS10.12", 12, 0, true},
      {"MacOS10.12", 0, 0, true},   {"MacOS11.1", 0, 0, false},    {"MacOS11.1", 11, 0, false},
      {"MacOS11.1", 12, 0, true},   {"MacOS12.0", 1, 0, true}};
  for (const auto& [keyword, major, minor, met] : rows)
    EXPECT_EQ(VersionComplaint(keyword, major, minor),
              met ? "" : "Mac OS X " + keyword.substr(5) + " or later is required.")
        << keyword << major;
  EXPECT_EQ(MemoryComplaint("1gb", 1000), "");
  EXPECT_EQ(MemoryComplaint("1GB", 999), "1 GB RAM is required.");
  EXPECT_EQ(MemoryComplaint("3GB", 1), "");
}
