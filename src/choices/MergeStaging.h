// SPDX-License-Identifier: MIT
// From a staging folder to the folder that it is for.
#pragma once

#include <functional>
#include <string>

#include "choices/ItemPlace.h"

/// Moves each item that the staging folder of `place` holds to its place, where it replaces what bears its
/// name; then deletes the staging folder. An item that can't be moved is reported by the path that it should
/// have had, and goes with the folder.
void MergeStaging(const ItemPlace& place, const std::function<void(const std::string& path)>& failed);
