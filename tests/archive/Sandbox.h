// SPDX-License-Identifier: MIT
// A fresh folder with an archive and the folder it is expanded into, and command lines with the helper.
#pragma once

#include "support/TemporaryTree.h"
#include "support/ZipBuilder.h"

namespace ziptest {

using Snapshot = TemporaryTree::Contents;

class Sandbox : public TemporaryTree {
 public:
  std::string Target() const { return Path("target"); }
  std::string Archive() const { return Path("a.zip"); }
  struct Way {
    bool mustBeNew = false, wall = true;
    unsigned workers = 2;
  };
  /// Expands `bytes` into Target() in this process. The sentence of the failure; empty on success.
  std::string Expand(const std::string& bytes, const Way& way) const;
  std::string Expand(const std::string& bytes) const { return Expand(bytes, Way()); }
};

struct Outcome {
  int status = 0;  // as the shell reports it: 128 + the signal's number
  std::string out, err;
};
/// Runs a command line of the shell in which "$DITTO" is the helper.
Outcome RunShell(const std::string& line);

}  // namespace ziptest
