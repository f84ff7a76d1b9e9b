// SPDX-License-Identifier: MIT
// What an archive will bring, by the expander's own plan of it.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "pack/Description.h"
#include "pack/Problems.h"

namespace pack {

/// Items by their paths below the top-level folder; that one itself is "".
struct Contents {
  enum class Kind { kFolder, kLink, kFile, kProgram };
  std::map<std::string, Kind> items;

  /// None where nothing stands at `path`. What lies behind a link is taken for one.
  std::optional<Kind> Find(const std::string& path) const;
  std::vector<std::string> Paths() const;
};

/// Of a folder that is to be packed below `top`, or of a zip that must hold the one folder `top`; an empty
/// `top` stands for none. What the expander would refuse goes to `problems`, under the key of `field`.
std::optional<Contents> ReadContents(const std::string& field, const Source& source, const std::string& top,
                                     Problems& problems);

/// Is there an executable file, or an application bundle with one? A link may lead to one.
bool HoldsProgram(const Contents& contents, const std::string& path);

/// Is it what a bundle holds, or a bundle alone?
bool HoldsBundle(const Contents& contents);

/// Refuses a finished archive that the expander would refuse.
void CheckArchive(const std::string& field, const std::filesystem::path& archive);

}  // namespace pack
