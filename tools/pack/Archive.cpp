// SPDX-License-Identifier: MIT
// Writing archives through libzip.
#include "pack/Archive.h"

#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

#include "pack/Refusal.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

// An archive that is being written; without Close nothing of it reaches the disk.
class ZipWriter {
 public:
  ZipWriter(std::string field, const fs::path& file) : fField(std::move(field)) {
    int error = 0;
    fZip = zip_open(file.c_str(), ZIP_CREATE | ZIP_EXCL, &error);
    if (fZip == nullptr) throw Refusal(file.string(), "can't be written");
  }
  ~ZipWriter() {
    if (fZip != nullptr) zip_discard(fZip);
  }
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  void AddFolder(const std::string& name, const struct stat& facts) {
    Finish(name + "/", zip_dir_add(fZip, (name + "/").c_str(), ZIP_FL_ENC_UTF_8), facts);
  }

  void AddFile(const std::string& name, const fs::path& file, const struct stat& facts) {
    AddSource(name, zip_source_file(fZip, file.c_str(), 0, -1), facts);
  }

  void AddLink(const std::string& name, const fs::path& link, const struct stat& facts) {
    // The library reads its sources when the archive is closed: it gets memory that it frees itself.
    const std::string target = fs::read_symlink(link).string();
    char* copy = static_cast<char*>(std::malloc(target.size()));
    if (copy == nullptr) throw std::bad_alloc();
    target.copy(copy, target.size());
    AddSource(name, zip_source_buffer(fZip, copy, target.size(), 1), facts);
  }

  void Close() {
    if (zip_close(fZip) != 0) Refuse("");
    fZip = nullptr;
  }

 private:
  [[noreturn]] void Refuse(const std::string& name) {
    throw Refusal(fField,
                  "can't be archived" + (name.empty() ? "" : ", at " + name) + ": " + zip_strerror(fZip));
  }

  void AddSource(const std::string& name, zip_source_t* source, const struct stat& facts) {
    if (source == nullptr) Refuse(name);
    const zip_int64_t index = zip_file_add(fZip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) zip_source_free(source);
    // Left to itself the library takes the slowest level.
    constexpr zip_uint32_t kLevel = 6;
    if (index >= 0 &&
        zip_set_file_compression(fZip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, kLevel) != 0)
      Refuse(name);
    Finish(name, index, facts);
  }

  // The archive's own time field has local time in steps of two seconds; the extra field has UTC.
  void Finish(const std::string& name, zip_int64_t signedIndex, const struct stat& facts) {
    if (signedIndex < 0) Refuse(name);
    const auto index = static_cast<zip_uint64_t>(signedIndex);
    const auto mode = static_cast<zip_uint32_t>(facts.st_mode & (S_IFMT | 0777));
    const auto time = static_cast<zip_uint64_t>(facts.st_mtime);
    std::array<zip_uint8_t, 5> utc = {1};
    for (unsigned i = 0; i < 4; ++i) utc[i + 1] = static_cast<zip_uint8_t>(time >> (8 * i));
    constexpr zip_uint16_t kUnixTime = 0x5455;
    if (zip_file_set_external_attributes(fZip, index, 0, ZIP_OPSYS_UNIX, mode << 16) != 0 ||
        zip_file_set_mtime(fZip, index, facts.st_mtime, 0) != 0 ||
        zip_file_extra_field_set(fZip, index, kUnixTime, ZIP_EXTRA_FIELD_NEW, utc.data(), utc.size(),
                                 ZIP_FL_CENTRAL | ZIP_FL_LOCAL) != 0) {
      Refuse(name);
    }
  }

  std::string fField;
  zip_t* fZip = nullptr;
};

struct stat FactsOf(const fs::path& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0)
    throw fs::filesystem_error("lstat", path, std::error_code(errno, std::generic_category()));
  return facts;
}

void AddTree(ZipWriter& zip, const std::string& field, const fs::path& folder, const std::string& prefix) {
  std::vector<fs::path> items(fs::directory_iterator(folder), fs::directory_iterator{});
  std::sort(items.begin(), items.end());
  for (const fs::path& item : items) {
    const struct stat facts = FactsOf(item);
    const std::string name = prefix + item.filename().string();
    if (S_ISLNK(facts.st_mode)) {
      zip.AddLink(name, item, facts);
    } else if (S_ISDIR(facts.st_mode)) {
      zip.AddFolder(name, facts);
      AddTree(zip, field, item, name + "/");
    } else if (S_ISREG(facts.st_mode)) {
      zip.AddFile(name, item, facts);
    } else {
      throw Refusal(field, "holds something that is no file, folder or link: " + item.string());
    }
  }
}

// For a name such as "a/../b".
bool ClimbsOut(const std::string& name) {
  return ("/" + name + "/").find("/../") != std::string::npos;
}

}  // namespace

void ZipFolder(const std::string& field, const fs::path& folder, const std::string& top,
               const fs::path& zip) {
  if (fs::is_empty(folder)) throw Refusal(field, "names a folder that holds nothing: " + folder.string());
  ZipWriter writer(field, zip);
  if (!top.empty()) writer.AddFolder(top, FactsOf(folder / "."));
  AddTree(writer, field, folder, top.empty() ? "" : top + "/");
  writer.Close();
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
