// SPDX-License-Identifier: MIT
// Opens and makes the target folder.
#include "archive/writing/TargetFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <string_view>

namespace archive {
namespace {

constexpr int kOpenPlace = O_PATH | O_DIRECTORY | O_CLOEXEC;

}  // namespace

Result<TargetFolder> TargetFolder::Find(const std::string& path) {
  TargetFolder target;
  target.fPath = path;
  if (path.empty()) return Fail("the folder to expand into has no name");
  target.fOpened = Descriptor(open(path.front() == '/' ? "/" : ".", kOpenPlace));
  if (!target.fOpened) return FailedCall("open the folder", path);
  for (std::string_view rest = path; !rest.empty();) {
    const std::string name(rest.substr(0, rest.find('/')));
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    if (name.empty()) continue;
    if (!target.fMissing.empty()) {
      target.fMissing.push_back(name);
      continue;
    }
    Descriptor next(openat(target.fOpened.Get(), name.c_str(), kOpenPlace));
    if (next)
      target.fOpened = std::move(next);
    else if (errno == ENOENT)
      target.fMissing.push_back(name);
    else
      return FailedCall("open the folder", path);
  }
  return target;
}

Status TargetFolder::Make() {
  constexpr mode_t kMode = 0777;  // less what the user's mask forbids
  for (const std::string& name : fMissing) {
    const bool made = mkdirat(fOpened.Get(), name.c_str(), kMode) == 0;
    if (!made && errno != EEXIST) return FailedCall("make the folder", fPath);
    Descriptor next(openat(fOpened.Get(), name.c_str(), kOpenPlace));
    if (!next) return FailedCall("open the folder", fPath);
    std::swap(fOpened, next);
    if (made) fMade.push_back({std::move(next), name});
  }
  fMissing.clear();
  return {};
}

Status TargetFolder::CountAsMade() {
  const std::size_t slash = fPath.rfind('/');
  const std::string name = fPath.substr(slash == std::string::npos ? 0 : slash + 1);
  const std::string above = slash == std::string::npos ? "." : fPath.substr(0, slash + 1);
  Descriptor parent(open(above.c_str(), kOpenPlace));
  if (!parent || name.empty() || name.front() == '/') return FailedCall("open the folder", fPath);
  fMade.push_back({std::move(parent), name});
  return {};
}

TargetFolder::~TargetFolder() {
  // Not empty any more: then somebody else uses it.
  for (; !fMade.empty(); fMade.pop_back())
    static_cast<void>(unlinkat(fMade.back().parent.Get(), fMade.back().name.c_str(), AT_REMOVEDIR));
}

}  // namespace archive
