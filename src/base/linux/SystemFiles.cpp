// SPDX-License-Identifier: MIT
#include "base/SystemFiles.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* kOwnDescriptors = "/proc/self/fd/";

}  // namespace

bool RenameToFreeName(int from, const char* name, int to, const char* newName) {
  return ::renameat2(from, name, to, newName, RENAME_NOREPLACE) == 0;
}

bool ExchangeItems(int from, const char* name, int to, const char* otherName) {
  return ::renameat2(from, name, to, otherName, RENAME_EXCHANGE) == 0;
}

Descriptor OpenUnnamed(const std::string& folder) {
  return Descriptor(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
}

bool GiveName(int file, const std::string& path) {
  return ::linkat(AT_FDCWD, PathOfDescriptor(file).c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

Descriptor OpenInMemory(bool inherited) {
  return Descriptor(::memfd_create("text", inherited ? 0 : MFD_CLOEXEC));
}

std::string PathOfDescriptor(int file) {
  return kOwnDescriptors + std::to_string(file);
}

bool IsPathOfDescriptor(const std::string& path) {
  return path.starts_with(kOwnDescriptors);
}

ssize_t CopyRange(int source, int target, std::size_t count) {
  return ::copy_file_range(source, nullptr, target, nullptr, count, 0);
}

bool LookAtItem(int folder, const char* name, ItemFacts& facts) {
  struct statx info {};
  constexpr unsigned kWanted = STATX_TYPE | STATX_BLOCKS | STATX_NLINK | STATX_UID;
  if (::statx(folder, name, AT_SYMLINK_NOFOLLOW, kWanted, &info) != 0) return false;
  constexpr std::uint64_t kBlock = 512;
  constexpr std::uint64_t kFrozen = STATX_ATTR_IMMUTABLE | STATX_ATTR_APPEND;
  facts = {.mode = info.stx_mode,
           .owner = info.stx_uid,
           .names = info.stx_nlink,
           .bytes = info.stx_blocks * kBlock,
           .frozen = (info.stx_attributes & kFrozen) != 0,
           .mounted = (info.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0};
  return true;
}
