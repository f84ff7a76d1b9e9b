// SPDX-License-Identifier: MIT
// The action script's entries, held against what the installer makes of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "pack/Contents.h"
#include "pack/Section.h"

namespace pack {

/// The entries of "actions". What isn't one as the installer reads it goes to the problems.
std::vector<std::string> ReadActions(Section& section);

/// Whether the installer can carry them out. `payload` is what will be in the target folder, if that is
/// known.
void CheckActions(const std::vector<std::string>& actions, const std::optional<Contents>& payload, bool patch,
                  Problems& problems);

}  // namespace pack
