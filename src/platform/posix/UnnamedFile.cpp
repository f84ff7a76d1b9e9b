// SPDX-License-Identifier: MIT
#include "platform/UnnamedFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "base/Descriptor.h"
#include "base/SiblingName.h"
#include "base/SystemFiles.h"

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

/// For file systems that make no file without a name: it loses its name at once.
Descriptor MakeAndUnlink(const std::string& path) {
  Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly));
  if (file && ::unlink(path.c_str()) != 0) return Descriptor();
  return file;
}

}  // namespace

struct UnnamedFile::Held {
  Descriptor file;
};

UnnamedFile::UnnamedFile(std::unique_ptr<Held> held) : fHeld(std::move(held)) {}
UnnamedFile::UnnamedFile(UnnamedFile&& other) noexcept = default;
UnnamedFile& UnnamedFile::operator=(UnnamedFile&& other) noexcept = default;
UnnamedFile::~UnnamedFile() = default;

std::optional<UnnamedFile> UnnamedFile::Make(const FolderItem& folder) {
  auto held = std::make_unique<Held>();
  held->file = OpenUnnamed(folder.NativePath());
  if (!held->file) held->file = MakeAndUnlink(SiblingName(folder.Child("archive").NativePath()));
  if (!held->file) return std::nullopt;
  return UnnamedFile(std::move(held));
}

FolderItem UnnamedFile::Item() const {
  return FolderItem(PathOfDescriptor(fHeld->file.Get()));
}

bool UnnamedFile::IsOne(const FolderItem& item) {
  return IsPathOfDescriptor(item.NativePath());
}
