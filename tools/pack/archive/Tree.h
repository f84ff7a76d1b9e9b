// SPDX-License-Identifier: MIT
// What a folder holds, as it goes into an archive.
#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "pack/Problems.h"

namespace pack {

enum class Kind { kFolder, kLink, kFile };

struct TreeItem {
  std::string name;  ///< in the archive: UTF-8, parts separated by "/", one behind a folder's name
  std::string path;  ///< on the disk
  Kind kind = Kind::kFile;
  std::uint32_t mode = 0;  ///< type and access rights
  timespec modified{};     ///< last change of the content
  std::time_t stated = 0;  ///< what the archive says of it, in seconds since 1970
  std::uint64_t size = 0;  ///< of a file
  std::string target;      ///< of a link
};

/// All that `folder` holds, below the one top-level folder `top` or at the top where `top` is empty, in the
/// order of the names' bytes: a folder comes before its content. What can't be packed is left out and goes to
/// `problems`: what is no file, folder or link, what can't be read, and names that an archive can't hold.
std::vector<TreeItem> ListTree(const std::string& field, const std::filesystem::path& folder,
                               const std::string& top, Problems& problems);
/// The same; throws the first of them.
std::vector<TreeItem> ListTree(const std::string& field, const std::filesystem::path& folder,
                               const std::string& top);

}  // namespace pack
