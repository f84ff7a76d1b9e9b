// SPDX-License-Identifier: MIT
// Progress of an expansion as lines of text, for the program that waits for it.
#pragma once

#include <string>

#include "archive/Expand.h"

namespace archive {

/// Writes "items NUMBER" and "largest BYTES" where nothing but a look was asked for; "total BYTES", then
/// "written BYTES" as it rises, then "done". Nobody reading, or too slowly, never holds the expansion up:
/// lines that don't fit are dropped. SIGPIPE must be ignored.
class ProgressLines : public ExpandWatcher {
 public:
  explicit ProgressLines(int descriptor) : fDescriptor(descriptor) {}
  void Planned(std::uint64_t items, std::uint64_t largest) override;
  void Total(std::uint64_t bytes) override;
  void Written(std::uint64_t bytes) override;
  void Done();

 private:
  void Put(const std::string& line, int patience);

  int fDescriptor;
  std::uint64_t fLast = 0;
};

}  // namespace archive
