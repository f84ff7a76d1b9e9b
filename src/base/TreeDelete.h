// SPDX-License-Identifier: MIT
// Removal of a whole tree that can't be led astray.
#pragma once

#include <functional>
#include <string>

/// Deletes the item at the absolute `path` with all that it holds, and goes on past what can't be
/// deleted. Links are removed, never followed; other file systems mounted inside are left alone;
/// folders closed to their owner are opened first. `tick` runs every few items. True when all went.
bool DeleteTreeAt(const std::string& path, const std::function<void()>& tick);

/// The same for the item `name` of the folder open as `parent`. Three descriptors are enough for it.
bool DeleteTreeIn(int parent, const std::string& name);
