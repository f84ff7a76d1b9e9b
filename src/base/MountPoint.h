// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// Whether a file system is mounted on the item `name` of the open folder (or AT_FDCWD and a path), also
/// one that lies on the same device as the folder: statx(2). False where there is no such item.
bool IsMountPoint(int folder, const char* name);

/// Where file systems are mounted, by this process's own view: proc(5), mountinfo. Empty where the system
/// doesn't tell.
std::vector<std::string> MountPoints();
