// SPDX-License-Identifier: MIT
// Archives of folders.
#pragma once

#include <filesystem>
#include <string>

#include "pack/archive/Compression.h"

namespace pack {

/// Packs all that `folder` holds, below the one top-level folder `top`, or at the top where `top` is empty.
/// Access rights, times, links as links and empty folders are kept. The same tree gives the same bytes.
void ArchiveFolder(const std::string& field, const std::filesystem::path& folder, const std::string& top,
                   const Compression& compression, const std::filesystem::path& archive);

}  // namespace pack
