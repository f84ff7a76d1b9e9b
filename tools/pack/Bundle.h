// SPDX-License-Identifier: MIT
// The bundle itself: runtime, records, archives, put in place in one go.
#pragma once

#include <filesystem>

#include "pack/Description.h"

namespace pack {

/// Makes the installer bundle `out`. `runtime` is the folder that holds the installer's programs. A bundle of
/// this kind at `out` is replaced, anything else there is refused. The pieces of a split set but the first
/// go beside the bundle. On a throw nothing is left behind and what was there before is there still.
void MakeBundle(const Description& description, const std::filesystem::path& out,
                const std::filesystem::path& runtime);

}  // namespace pack
