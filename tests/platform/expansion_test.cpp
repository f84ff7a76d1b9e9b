// SPDX-License-Identifier: MIT
// The expansion helper as this side sees it: its arguments, its reports and its end. Scripts stand in
// for the helper.
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/posix/HelperExpansion.h"
#include "support/TemporaryTree.h"

TEST(Expansion, ReportsAndReasonsComeAsTheHelperEnds) {
  struct Row {
    const char *script, *seen, *reason;
  };
  const char* const kEarly = "The expansion ended before its time.";
  const Row rows[] = {
      {"echo total 200; echo written 100; echo done", "100 done", ""},
      {"echo total 200; echo written 100; exit 1", "50", kEarly},
      {"echo total 4; echo written 3; kill -9 $$", "75", kEarly},
      {"echo total 4; echo written 3; echo written 1; exit 1", "75", kEarly},
      {"echo total 4; echo written 400; exit 1", "100", kEarly},
      {"echo written 10; exit 1", "0", kEarly},
      {"printf tot; sleep 0.02; printf 'al 4\\nwritten 2'; sleep 0.02; printf '\\n'; exit 1", "50", kEarly},
      {"printf 'x\\n\\0\\nwritten\\nwritten x\\ntotal\\n'; exit 0", "100 done", ""},
      {"head -c 3000000 /dev/zero | tr '\\0' e >&2; yes written 1 | head -n 100000", "100 done", ""},
      {"echo 'ditto: the entry is damaged' >&2; echo more >&2; exit 1", "0", "The entry is damaged."},
      {"for word; do echo \"$word\"; done >\"${0%/*}/words\"", "100 done", ""},
      {"", "0", "The expansion program can't be started."}};
  for (const Row& row : rows) {
    const TemporaryTree tree;
    if (*row.script != '\0') tree.Write("helper", std::string("#!/bin/sh\n") + row.script + "\n", 0755);
    HelperExpansion expansion(tree.Path("helper"), {"--plan", "-folder/it's \"x\".zip", ""});
    for (double done = 0; expansion.Running(); ::usleep(1000)) {
      EXPECT_GE(expansion.Done(), done);
      done = expansion.Done();
    }
    const std::string percent = std::to_string(static_cast<int>(100 * expansion.Done()));
    EXPECT_EQ(percent + (expansion.Succeeded() ? " done" : ""), row.seen) << row.script;
    EXPECT_EQ(expansion.Reason(), row.reason) << row.script;
    EXPECT_TRUE(!tree.Has("words") || tree.Read("words") == "--plan\n-folder/it's \"x\".zip\n\n");
  }
}
