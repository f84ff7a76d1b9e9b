// SPDX-License-Identifier: MIT
#pragma once

/// Whether a file system is mounted on the item `name` of the open folder (or AT_FDCWD and a path), also
/// one that lies on the same device as the folder: statx(2). False where there is no such item.
bool IsMountPoint(int folder, const char* name);
