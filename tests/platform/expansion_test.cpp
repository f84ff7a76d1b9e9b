// SPDX-License-Identifier: MIT
// The expansion helper as this side sees it: its arguments, its reports and its end. Scripts stand in
// for the helper.
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/posix/HelperExpansion.h"
#include "support/TemporaryTree.h"

namespace {

struct Outcome {
  bool ended = false;
  bool succeeded = false;
  double done = 0;
  bool neverBack = true;  // the reported part never became smaller
};

Outcome RunToEnd(const TemporaryTree& tree, const std::string& script) {
  const std::string helper =
      script.empty() ? tree.Path("none") : tree.Write("helper", "#!/bin/sh\n" + script, 0755);
  HelperExpansion expansion(helper, FolderItem(tree.Path("-folder/it's.zip")));
  Outcome outcome;
  for (int i = 0; i < 10'000 && !outcome.ended; ++i) {
    outcome.ended = !expansion.Running();
    outcome.neverBack = outcome.neverBack && expansion.Done() >= outcome.done;
    outcome.done = expansion.Done();
    ::usleep(1000);
  }
  outcome.succeeded = expansion.Succeeded();
  EXPECT_FALSE(expansion.Running()) << "the end stays the end";
  return outcome;
}

}  // namespace

TEST(Expansion, FollowsTheReportsToTheEnd) {
  const struct {
    const char* why;
    const char* script;
    bool succeeded;
    double done;
  } rows[] = {
      {"all goes well", "echo total 200; echo written 100; echo done", true, 1},
      {"fails half-way", "echo total 200; echo written 100; exit 1", false, 0.5},
      {"killed half-way", "echo total 4; echo written 3; kill -9 $$", false, 0.75},
      {"says done and fails", "echo total 4; echo written 4; echo done; exit 2", false, 1},
      {"goes back", "echo total 4; echo written 3; echo written 1; exit 1", false, 0.75},
      {"writes more than it said", "echo total 4; echo written 400; exit 1", false, 1},
      {"no total, no part", "echo written 10; exit 1", false, 0},
      {"total of nothing", "echo total 0; echo written 10; exit 1", false, 0},
      {"reports in pieces",
       "printf tot; sleep 0.02; printf 'al 4\\nwritten 2'; sleep 0.02; printf '\\n'; exit 1", false, 0.5},
      {"a last line without end", "echo total 4; printf 'written 2'; exit 1", false, 0},
      {"noise", "printf 'x\\n\\0\\nwritten\\nwritten x\\ntotal\\n'; exit 0", true, 1},
      {"not there", "", false, 0},
  };
  for (const auto& row : rows) {
    const TemporaryTree tree;
    const Outcome outcome = RunToEnd(tree, row.script);
    EXPECT_TRUE(outcome.ended && outcome.neverBack) << row.why;
    EXPECT_EQ(outcome.succeeded, row.succeeded) << row.why;
    EXPECT_DOUBLE_EQ(outcome.done, row.done) << row.why;
  }
}

TEST(Expansion, MuchTalkHoldsNothingUp) {
  const TemporaryTree tree;
  EXPECT_TRUE(
      RunToEnd(tree, "head -c 3000000 /dev/zero | tr '\\0' e >&2; yes written 1 | head -n 100000").succeeded);
}

TEST(Expansion, TheArchiveIsExpandedBesideItselfIntoNothingThatIsThere) {
  const TemporaryTree tree;
  ASSERT_TRUE(RunToEnd(tree, "for word; do printf '%s\\n' \"$word\"; done >\"${0%/*}/words\"").succeeded);
  EXPECT_EQ(tree.Read("words"), "-xk\n--new\n--progress\n--\n" + tree.Path("-folder/it's.zip") + "\n" +
                                    tree.Path("-folder") + "\n");
}
