// SPDX-License-Identifier: MIT
// File items over POSIX calls.
#include "platform/FolderItem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <limits>

#include "base/Descriptor.h"
#include "base/FolderNames.h"
#include "base/MountPoint.h"
#include "base/SiblingName.h"
#include "base/TreeDelete.h"
#include "platform/Machine.h"
#include "platform/desktop/HiddenList.h"
#include "platform/posix/FileCopy.h"
#include "platform/posix/Replace.h"
#include "platform/posix/TreeLook.h"

namespace {

bool LinkStatus(const std::string& path, struct stat& info) {
  return ::lstat(path.c_str(), &info) == 0;
}

void KeepWindowsAlive() {
  Machine::Current().Yield();
}

}  // namespace

FolderItem::FolderItem(std::string path) : fPath(std::move(path)) {
  while (fPath.size() > 1 && fPath.back() == '/') fPath.pop_back();
}

std::string FolderItem::ShellPath() const {
  // Inside single quotes a POSIX shell takes every byte as it is; a quote itself is put between.
  std::string word = "'";
  for (const char byte : fPath) {
    if (byte == '\'')
      word += "'\\''";
    else
      word += byte;
  }
  return word + "'";
}

std::string FolderItem::Name() const {
  return fPath == "/" ? "" : fPath.substr(fPath.rfind('/') + 1);
}

FolderItem FolderItem::Parent() const {
  const std::size_t slash = fPath.rfind('/');
  return FolderItem(slash == std::string::npos || slash == 0 ? "/" : fPath.substr(0, slash));
}

FolderItem FolderItem::Child(const std::string& name) const {
  return FolderItem(fPath == "/" ? "/" + name : fPath + "/" + name);
}

std::string FolderItem::ResolvedPath() const {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(fPath, error);
  return error ? fPath : resolved.string();
}

std::string FolderItem::Place() const {
  return FolderItem(Parent().ResolvedPath()).Child(Name()).NativePath();
}

std::optional<std::vector<FolderItem>> FolderItem::List() const {
  const Descriptor folder(::open(fPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const std::optional<std::vector<std::string>> names = NamesIn(folder.Get());
  if (!names) return std::nullopt;
  std::vector<FolderItem> children;
  children.reserve(names->size());
  for (const std::string& name : *names) children.push_back(Child(name));
  return children;
}

bool FolderItem::Exists() const {
  struct stat info {};
  return LinkStatus(fPath, info);
}

bool FolderItem::Directory() const {
  struct stat info {};
  return ::stat(fPath.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool FolderItem::Alias() const {
  struct stat info {};
  return LinkStatus(fPath, info) && S_ISLNK(info.st_mode);
}

bool FolderItem::IsFile() const {
  struct stat info {};
  return LinkStatus(fPath, info) && S_ISREG(info.st_mode);
}

bool FolderItem::IsVolume() const {
  return IsMountPoint(AT_FDCWD, fPath.c_str());
}

bool FolderItem::IsOwn() const {
  struct stat info {};
  struct stat parent {};
  return LinkStatus(fPath, info) && !S_ISLNK(info.st_mode) && info.st_uid == ::geteuid() &&
         LinkStatus(Parent().fPath + "/.", parent) &&
         ((parent.st_mode & (S_IWGRP | S_IWOTH)) == 0 || (parent.st_mode & S_ISVTX) != 0);
}

std::uint64_t FolderItem::Length() const {
  struct stat info {};
  if (::stat(fPath.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return 0;
  return static_cast<std::uint64_t>(info.st_size);
}

bool FolderItem::IsWriteable() const {
  return ::access(fPath.c_str(), Directory() ? W_OK | X_OK : W_OK) == 0;
}

bool FolderItem::Visible() const {
  const std::string name = Name();
  return !name.starts_with('.') && !IsListedHidden(Parent().NativePath(), name);
}

void FolderItem::SetVisible(bool visible) const {
  ListHidden(Parent().NativePath(), Name(), !visible);
}

bool FolderItem::CreateAsFolder() const {
  return ::mkdir(fPath.c_str(), 0777) == 0;
}

bool FolderItem::CopyFileTo(const FolderItem& target, bool keepLink) const {
  return CopySingleItem(fPath, target.fPath, keepLink, KeepWindowsAlive);
}

void FolderItem::CopyAttributesTo(const FolderItem& target) const {
  CopyAttributes(fPath, target.fPath);
}

FolderItem::Moved FolderItem::MoveFileTo(const FolderItem& target) const {
  switch (MoveOver(fPath, target.fPath, KeepWindowsAlive)) {
    case Replaced::Yes:
      return Moved::Yes;
    case Replaced::OtherFileSystem:
      return Moved::OtherFileSystem;
    case Replaced::No:
      break;
  }
  return Moved::No;
}

FolderItem FolderItem::FreshSibling() const {
  return FolderItem(SiblingName(fPath));
}

bool FolderItem::Delete() const {
  const bool gone = std::remove(fPath.c_str()) == 0;
  if (gone) ListHidden(Parent().NativePath(), Name(), false);
  return gone;
}

bool FolderItem::DeleteTree() const {
  const bool gone = DeleteTreeAt(fPath, KeepWindowsAlive);
  if (gone) ListHidden(Parent().NativePath(), Name(), false);
  return gone;
}

bool FolderItem::CanBeDeleted() const {
  return LookAtTree(fPath, KeepWindowsAlive).deletable;
}

FolderItem::Room FolderItem::RoomTaken() const {
  const TreeFacts facts = LookAtTree(fPath, KeepWindowsAlive);
  return {facts.bytes, facts.items};
}

FolderItem::Room FolderItem::RoomLeft() const {
  constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();
  struct statvfs info {};
  if (::statvfs(fPath.c_str(), &info) != 0) return {kUnknown, kUnknown};
  return {info.f_blocks == 0 ? kUnknown : std::uint64_t{info.f_bavail} * info.f_frsize,
          info.f_files == 0 ? kUnknown : info.f_favail};
}

bool FolderItem::SetPermissions(unsigned mode) const {
  return ::fchmodat(AT_FDCWD, fPath.c_str(), mode & 07777U, AT_SYMLINK_NOFOLLOW) == 0;
}

unsigned FolderItem::Permissions() const {
  struct stat info {};
  return LinkStatus(fPath, info) ? info.st_mode & 07777U : 0;
}

bool FolderItem::Launch(bool /*activate*/) const {
  return Machine::Current().Launch(*this);
}
