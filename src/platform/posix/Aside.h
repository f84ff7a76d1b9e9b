// SPDX-License-Identifier: MIT
// Where file systems can't exchange two items, the one that is replaced steps aside for a moment.
#pragma once

#include <functional>
#include <string>

/// Puts the item at `source` in place of the one at `target`, which is deleted then; both absolute, on one
/// file system. On failure all is as it was, and errno says why. What a killed process has left,
/// TakeBackAside() ends. `tick` runs every few items that are deleted.
bool TakeTurns(const std::string& source, const std::string& target, const std::function<void()>& tick);

/// Is it the name of a folder that holds an item aside?
bool IsAside(const std::string& name);

/// Puts back what lies in the folder `name` of the folder open as `parent`, unless something stands in its
/// place; then it is deleted, and in the end the folder. Nothing happens while its run lives.
void TakeBackAside(int parent, const std::string& name);
