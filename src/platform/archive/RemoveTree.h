// SPDX-License-Identifier: MIT
// Deletes a folder with all that is in it, by descriptors.
#pragma once

namespace archive {

/// Follows no link, takes any depth with few descriptors, and takes folders that forbid their owner to
/// change them. False where something stays (errno says why for the last of it).
bool RemoveTree(int parent, const char* name);

}  // namespace archive
