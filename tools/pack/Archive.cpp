// SPDX-License-Identifier: MIT
// Archives in their ways; given ones are read by libzip.
#include "pack/Archive.h"

#include <zip.h>

#include <utility>
#include <vector>

#include "pack/Progress.h"
#include "pack/Refusal.h"
#include "pack/archive/PlainZip.h"
#include "pack/archive/Solid.h"
#include "pack/archive/Tree.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

// For a name such as "a/../b".
bool ClimbsOut(const std::string& name) {
  return ("/" + name + "/").find("/../") != std::string::npos;
}

}  // namespace

void ArchiveFolder(const std::string& field, const fs::path& folder, const std::string& top,
                   const Compression& compression, const fs::path& archive) {
  if (fs::is_empty(folder)) throw Refusal(field, "names a folder that holds nothing: " + folder.string());
  std::vector<TreeItem> items = ListTree(field, folder, top);
  std::uint64_t bytes = 0;
  for (const TreeItem& item : items) bytes += item.size;
  Progress::Current().Begin(bytes);
  if (compression.method == Method::kSolid) {
    WriteSolid(std::move(items), compression.level, archive);
  } else {
    WritePlainZip(items, compression, archive);
  }
}

void CheckZip(const std::string& field, const fs::path& zip, const std::string& top) {
  int error = 0;
  zip_t* archive = zip_open(zip.c_str(), ZIP_RDONLY, &error);
  if (archive == nullptr) throw Refusal(field, "names a file that is no zip: " + zip.string());
  std::vector<std::string> names;
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    const char* name = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
    names.emplace_back(name == nullptr ? "" : name);
  }
  zip_discard(archive);
  if (names.empty()) throw Refusal(field, "names a zip that holds nothing: " + zip.string());
  for (const std::string& name : names) {
    if (ClimbsOut(name) || name.starts_with('/'))
      throw Refusal(field, "has an entry that leads out of it: " + name);
    if (!top.empty() && !name.starts_with(top + "/"))
      throw Refusal(field, "has an entry that isn't in the folder \"" + top + "\": " + name);
  }
}

}  // namespace pack
