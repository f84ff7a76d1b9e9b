// SPDX-License-Identifier: MIT
// How long to wait, and where an install goes.
#include <gtest/gtest.h>

#include "engine/Target.h"
#include "engine/WaitEstimate.h"

TEST(WaitEstimate, GrowsWithTheArchiveAndIsCutForLargeOnes) {
  const struct {
    std::uint64_t size;
    std::int64_t ticks, slow;
  } rows[] = {{0, 30, 60},
              {2'999'999, 30, 60},
              {3'000'000, 60, 120},
              {30'000'000, 330, 660},
              {30'000'001, 165, 330},
              {300'000'000, 1515, 3030},
              {300'000'001, 757, 1515},
              {6'000'000'000, 15'007, 30'015}};
  for (const auto& row : rows) {
    EXPECT_EQ(EstimateTicks(row.size, false), row.ticks) << row.size;
    EXPECT_EQ(EstimateTicks(row.size, true), row.slow) << row.size;
  }
}

TEST(Target, NamesThatLeadOutOfTheFolderAreNone) {
  for (const char* name :
       {"Demo", "De mo.app", "Caf\u00E9", "...", "..x", ".hidden", "Sub/Demo", "a\\b", "-x", "~"})
    EXPECT_TRUE(IsTargetName(name)) << name;
  for (const char* name :
       {"", ".", "..", "/x", "x/", "../x", "a/..", "a/../b", "a/./b", "a//b", "a\nb", "a\x7F", "/"})
    EXPECT_FALSE(IsTargetName(name)) << name;
  EXPECT_FALSE(IsTargetName(std::string("a\0b", 3)));
}

TEST(Target, IsPlannedInsideTheChosenFolder) {
  EXPECT_EQ(PlanTarget("/Applications/", "Demo").folder, "/Applications/Demo");
  EXPECT_EQ(PlanTarget("/chosen", "Sub/Demo").archive, "/chosen/Sub/Demo.zip");
  EXPECT_TRUE(LiesIn("/a/b", "/a") && LiesIn("/a", "/a") && LiesIn("/a", "/"));
  EXPECT_FALSE(LiesIn("/ab", "/a") || LiesIn("/", "/a") || LiesIn("/a", "/a/b"));
}
