// SPDX-License-Identifier: MIT
// Zip archives: folders go in, existing ones are looked over.
#pragma once

#include <filesystem>
#include <string>

namespace pack {

/// Zips all that `folder` holds, below the one top-level folder `top`, or at the top where `top` is empty.
/// Access rights, times, links as links and empty folders are kept. Entries come in the order of their names.
void ZipFolder(const std::string& field, const std::filesystem::path& folder, const std::string& top,
               const std::filesystem::path& zip);

/// Refuses what is no zip, an empty one, and one with an entry that doesn't lie below `top` (if that isn't
/// empty) or that climbs out by "..".
void CheckZip(const std::string& field, const std::filesystem::path& zip, const std::string& top);

}  // namespace pack
