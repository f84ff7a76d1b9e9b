// SPDX-License-Identifier: MIT
// What opening an item means here.
#pragma once

#include <string>

#include "platform/FolderItem.h"

enum class LaunchKind { kNothing, kProgram, kArchive, kDocument };

struct LaunchPlan {
  LaunchKind kind = LaunchKind::kNothing;
  std::string program;  // for kProgram: the executable's path
};

/// A folder named "….app" runs its executable, an executable file runs itself, a ".zip" is an archive;
/// anything else that exists is a document.
LaunchPlan PlanLaunch(const FolderItem& item);

/// The executable of a bundle: the one that Contents/Info.plist names as CFBundleExecutable, else the
/// one named as the bundle, else the only one in Contents/MacOS. Empty when there is none.
std::string BundleExecutable(const FolderItem& bundle);
