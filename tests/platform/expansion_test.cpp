// SPDX-License-Identifier: MIT
// The expansion helper as this side sees it: its arguments, its reports and its end. Scripts stand in
// for the helper.
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/posix/HelperExpansion.h"
#include "support/TemporaryTree.h"

/// How far the reports came, and "done" when the helper succeeded.
static std::string RunToEnd(const TemporaryTree& tree, const std::string& script) {
  if (!script.empty()) tree.Write("helper", "#!/bin/sh\n" + script, 0755);
  HelperExpansion expansion(tree.Path("helper"), {"--plan", "-folder/it's \"x\".zip", ""});
  double done = 0;
  bool ended = false;
  for (int i = 0; i < 10'000 && !ended; ++i) {
    ended = !expansion.Running();
    EXPECT_GE(expansion.Done(), done);
    done = expansion.Done();
    ::usleep(1000);
  }
  EXPECT_TRUE(ended && !expansion.Running());
  return std::to_string(static_cast<int>(100 * done)) + (expansion.Succeeded() ? " done" : "");
}

TEST(Expansion, FollowsTheReportsToTheEnd) {
  const char* const rows[][2] = {
      {"echo total 200; echo written 100; echo done", "100 done"},
      {"echo total 200; echo written 100; exit 1", "50"},
      {"echo total 4; echo written 3; kill -9 $$", "75"},
      {"echo total 4; echo written 4; echo done; exit 2", "100"},
      {"echo total 4; echo written 3; echo written 1; exit 1", "75"},
      {"echo total 4; echo written 400; exit 1", "100"},
      {"echo written 10; exit 1", "0"},
      {"echo total 0; echo written 10; exit 1", "0"},
      {"printf tot; sleep 0.02; printf 'al 4\\nwritten 2'; sleep 0.02; printf '\\n'; exit 1", "50"},
      {"echo total 4; printf 'written 2'; exit 1", "0"},
      {"printf 'x\\n\\0\\nwritten\\nwritten x\\ntotal\\n'; exit 0", "100 done"},
      {"head -c 3000000 /dev/zero | tr '\\0' e >&2; yes written 1 | head -n 100000", "100 done"},
      {"", "0"},  // no helper at all
  };
  for (const auto& row : rows) EXPECT_EQ(RunToEnd(TemporaryTree(), row[0]), row[1]) << row[0];
}

TEST(Expansion, WordsReachTheHelperAsTheyAreAndItsReasonTheUser) {
  const TemporaryTree tree;
  RunToEnd(tree, "for word; do printf '%s\\n' \"$word\"; done >\"${0%/*}/words\"");
  EXPECT_EQ(tree.Read("words"), "--plan\n-folder/it's \"x\".zip\n\n");
  const char* const rows[][2] = {
      {"exit 0", ""},
      {"echo 'ditto: the entry is damaged' >&2; echo more >&2; exit 1", "The entry is damaged."},
      {"kill -9 $$", "The expansion ended before its time."},
      {nullptr, "The expansion program can't be started."}};
  for (const auto& [script, reason] : rows) {
    const TemporaryTree other;
    if (script != nullptr) other.Write("helper", std::string("#!/bin/sh\n") + script + "\n", 0755);
    HelperExpansion expansion(other.Path("helper"), {});
    while (expansion.Running()) ::usleep(1000);
    EXPECT_EQ(expansion.Reason(), reason);
  }
}
