// SPDX-License-Identifier: MIT
// An item takes another one's place in one step.
#pragma once

#include <functional>
#include <string>

enum class Replaced {
  Yes,
  No,              // all is as it was
  OtherFileSystem  // the same; a copy is needed
};

/// rename(2), and where that can't replace what stands at `target` (a folder that holds something, or an
/// item of another kind), an exchange of the two, behind which the old one is deleted. What can't be
/// deleted of it then lies at `source`. No link at either end is followed. `tick` runs while a tree goes.
Replaced MoveOver(const std::string& source, const std::string& target, const std::function<void()>& tick);
