// SPDX-License-Identifier: MIT
// Hidden folders that one run works in, and by which the next knows what a killed one has left.
#pragma once

#include <string>
#include <string_view>

#include "base/Descriptor.h"

/// Of this user alone (mode 0700), and locked (flock(2)) as long as `lock` is open. Without `lock` there is
/// none.
struct LockedFolder {
  std::string name{};
  Descriptor lock{};

  /// A new one in the folder open as `parent`, under `prefix` and a number that can't be guessed.
  static LockedFolder Make(int parent, std::string_view prefix);
  /// The one of that name, if it is this user's and no run holds it any more. Not every file system keeps
  /// modes.
  static LockedFolder IfLeft(int parent, const std::string& name);
};
