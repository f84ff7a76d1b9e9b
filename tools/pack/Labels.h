// SPDX-License-Identifier: MIT
// The installer's texts that a publisher replaces, by name or by index.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "pack/Problems.h"

namespace pack {

/// From a list of strings in index order, or an object whose keys are names or indexes ("quit" or "1"). An
/// empty string keeps the built-in text.
std::vector<std::string> ReadLabels(const nlohmann::json& json, Problems& problems);

}  // namespace pack
