// SPDX-License-Identifier: MIT
// Reading, writing, copying and removing.
#include "pack/Files.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>

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

void RemoveTree(const fs::path& tree) {
  std::error_code ignored;
  if (fs::is_directory(fs::symlink_status(tree, ignored))) {
    fs::permissions(tree, fs::perms::owner_all, fs::perm_options::add, ignored);
    for (fs::directory_iterator i(tree, ignored), end; !ignored && i != end; i.increment(ignored))
      RemoveTree(i->path());
  }
  fs::remove(tree, ignored);
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
  std::string name = sibling.parent_path() / ".";
  name += sibling.filename().string() + ".XXXXXX";
  if (::mkdtemp(name.data()) == nullptr)
    throw Refusal(sibling.parent_path().string(), "is no folder that can be written to");
  path = name;
}

}  // namespace pack
