// SPDX-License-Identifier: MIT
// Copies of single files, links and empty folders.
#pragma once

#include <functional>
#include <string>

/// See FolderItem::CopyFileTo. `tick` runs every few megabytes.
bool CopySingleItem(const std::string& source, const std::string& target, bool keepLink,
                    const std::function<void()>& tick);

/// What is left of the file open as `source`, to the one open as `target`. `goOn` runs every few megabytes.
/// False on an error of either, and when `goOn` says so.
bool CopyBytes(int source, int target, const std::function<bool()>& goOn);

/// Permission bits and times of `source` for `target`; neither may be a link.
void CopyAttributes(const std::string& source, const std::string& target);
