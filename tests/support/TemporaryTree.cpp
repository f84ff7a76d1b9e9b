// SPDX-License-Identifier: MIT
#include "support/TemporaryTree.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file || !fs::is_regular_file(path)) return "<none>";
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::string Describe(const fs::path& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0) return "gone";
  if (S_ISLNK(info.st_mode)) return "link to " + fs::read_symlink(path).string();
  char mode[8];
  std::snprintf(mode, sizeof mode, " %03o", info.st_mode & 07777U);
  if (S_ISREG(info.st_mode)) return std::string("file") + mode + " " + BytesOf(path);
  return (S_ISDIR(info.st_mode) ? "folder" : "other") + std::string(mode);
}

}  // namespace

TemporaryTree::TemporaryTree() {
  ::umask(022);  // modes are compared
  std::string name = fs::canonical(fs::temp_directory_path()).string() + "/case-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) std::abort();
  fRoot = name;
}

TemporaryTree::~TemporaryTree() {
  std::error_code refused;
  fs::remove_all(fRoot, refused);
  if (refused) static_cast<void>(std::system(("chmod -R u+rwx " + fRoot + " && rm -rf " + fRoot).c_str()));
}

std::string TemporaryTree::Write(const std::string& name, const std::string& bytes, unsigned mode) const {
  fs::create_directories(fs::path(Path(name)).parent_path());
  std::ofstream(Path(name), std::ios::binary) << bytes;
  fs::permissions(Path(name), fs::perms(mode));
  return Path(name);
}

std::string TemporaryTree::Folder(const std::string& name) const {
  fs::create_directories(Path(name));
  return Path(name);
}

std::string TemporaryTree::Link(const std::string& name, const std::string& target) const {
  fs::create_directories(fs::path(Path(name)).parent_path());
  fs::create_symlink(target, Path(name));
  return Path(name);
}

std::string TemporaryTree::Read(const std::string& name) const {
  return BytesOf(Path(name));
}

bool TemporaryTree::Has(const std::string& name) const {
  return fs::symlink_status(Path(name)).type() != fs::file_type::not_found;
}

TemporaryTree::Contents TemporaryTree::Look(const std::string& name) const {
  Contents contents;
  if (!fs::exists(Path(name))) return contents;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Path(name)))
    contents[entry.path().string().substr(Path(name).size() + 1)] = Describe(entry.path());
  return contents;
}

std::vector<std::string> Words(const std::string& list) {
  std::vector<std::string> words;
  std::istringstream text(list);
  for (std::string word; std::getline(text, word, '|');) words.push_back(word);
  return words;
}

TemporaryTree::Contents Items(const std::string& list) {
  TemporaryTree::Contents items;
  for (const std::string& word : Words(list)) {
    const std::size_t colon = word.find(": ");
    std::string what = colon == std::string::npos ? "folder 755" : word.substr(colon + 2);
    if (!what.starts_with("folder ") && !what.starts_with("file ") && !what.starts_with("link to "))
      what.insert(0, "file 644 ");
    items[word.substr(0, std::min(colon, word.size() - 1))] = what;
  }
  return items;
}

SmallDisk::SmallDisk(const std::string& folder, unsigned kilobytes, unsigned items) : fFolder(folder) {
  std::string size = "size=" + std::to_string(kilobytes) + "k";
  if (items > 0) size += ",nr_inodes=" + std::to_string(items);
  fMounted = ::unshare(CLONE_NEWNS) == 0 &&
             ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
             ::mount("none", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
}

SmallDisk::~SmallDisk() {
  if (fMounted) ::umount2(fFolder.c_str(), MNT_DETACH);
}

void SmallDisk::MakeReadOnly() const {
  ::mount("none", fFolder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
}
