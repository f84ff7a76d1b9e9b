// SPDX-License-Identifier: MIT
// Reading, writing, copying and removing.
#include "pack/Files.h"

#include <fcntl.h>

#include <fstream>
#include <iterator>

#include "base/FolderNames.h"
#include "base/TreeDelete.h"
#include "pack/Refusal.h"

namespace pack {

namespace fs = std::filesystem;

std::string ReadFile(const std::string& field, const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in || in.bad()) throw Refusal(field, "names a file that can't be read: " + file.string());
  return bytes;
}

void WriteFile(const fs::path& file, const std::string& bytes) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw Refusal(file.string(), "can't be written");
}

void CopyItem(const fs::path& from, const fs::path& to) {
  fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

void RenameAll(const std::vector<std::pair<fs::path, fs::path>>& renames) {
  for (auto step = renames.begin(); step != renames.end(); ++step) {
    std::error_code error;
    fs::rename(step->first, step->second, error);
    if (!error) continue;
    std::error_code ignored;
    for (auto done = std::make_reverse_iterator(step); done != renames.rend(); ++done)
      fs::rename(done->second, done->first, ignored);
    throw Refusal(step->second.string(), "can't be put in place: " + error.message());
  }
}

Staging::Staging(const fs::path& sibling) {
  const fs::path parent = sibling.parent_path();
  const std::string prefix = "." + sibling.filename().string() + "-";
  fParent = Descriptor(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (const std::string& name : NamesIn(fParent.Get()).value_or(std::vector<std::string>()))
    if (name.starts_with(prefix) && LockedFolder::IfLeft(fParent.Get(), name).lock)
      static_cast<void>(DeleteTreeIn(fParent.Get(), name));  // in nobody's way but the disk's
  fFolder = LockedFolder::Make(fParent.Get(), prefix);
  if (!fFolder.lock) throw Refusal(parent.string(), "is no folder that can be written to");
  path = parent / fFolder.name;
}

Staging::~Staging() {
  static_cast<void>(DeleteTreeIn(fParent.Get(), fFolder.name));  // the next run tries again
}

}  // namespace pack
