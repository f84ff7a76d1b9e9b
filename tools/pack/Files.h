// SPDX-License-Identifier: MIT
// Whole files, and folders that come and go.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "base/Descriptor.h"
#include "base/LockedFolder.h"

namespace pack {

/// The file's bytes; a file that can't be read is refused under the name of the `field` that names it.
std::string ReadFile(const std::string& field, const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

/// Copies a file, or a folder with its links as links. Access rights come along.
void CopyItem(const std::filesystem::path& from, const std::filesystem::path& to);

/// Carries out renames in order; when one fails, takes the earlier ones back and throws.
void RenameAll(const std::vector<std::pair<std::filesystem::path, std::filesystem::path>>& renames);

/// A hidden folder of this run's own, beside what will take its content. It goes when the object goes; what a
/// killed run has left for the same sibling goes first.
class Staging {
 public:
  explicit Staging(const std::filesystem::path& sibling);
  ~Staging();
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;
  std::filesystem::path path;

 private:
  Descriptor fParent;
  LockedFolder fFolder;
};

}  // namespace pack
