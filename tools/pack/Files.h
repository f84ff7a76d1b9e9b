// SPDX-License-Identifier: MIT
// Whole files, and folders that come and go.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace pack {

/// The file's bytes; a file that can't be read is refused under the name of the `field` that names it.
std::string ReadFile(const std::string& field, const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

/// Copies a file, or a folder with its links as links. Access rights come along.
void CopyItem(const std::filesystem::path& from, const std::filesystem::path& to);

/// Deletes a tree, read-only folders included; follows no link. What can't be deleted stays.
void RemoveTree(const std::filesystem::path& tree);

/// Carries out renames in order; when one fails, takes the earlier ones back and throws.
void RenameAll(const std::vector<std::pair<std::filesystem::path, std::filesystem::path>>& renames);

/// A hidden folder of this run's own, beside what will take its content. It goes when the object goes.
class Staging {
 public:
  explicit Staging(const std::filesystem::path& sibling);
  ~Staging() { RemoveTree(path); }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;
  std::filesystem::path path;
};

}  // namespace pack
