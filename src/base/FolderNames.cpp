// SPDX-License-Identifier: MIT
#include "base/FolderNames.h"

#include <dirent.h>
#include <fcntl.h>

#include <cerrno>

#include "base/Descriptor.h"

std::optional<std::vector<std::string>> NamesIn(int folder) {
  // A place of its own in the list: nobody else's reading moves on with it.
  Descriptor twin(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  DIR* list = twin ? ::fdopendir(twin.Get()) : nullptr;
  if (list == nullptr) return std::nullopt;
  static_cast<void>(twin.Release());  // the list's now
  std::vector<std::string> names;
  errno = 0;
  while (const dirent* entry = ::readdir(list)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  const bool whole = errno == 0;
  ::closedir(list);
  return whole ? std::optional(std::move(names)) : std::nullopt;
}
