// SPDX-License-Identifier: MIT
#include "archive/writing/FileMaker.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace archive {

FileMaker::FileMaker(const Plan& plan, int root, std::size_t descriptors, MadeFolders& made)
    : fPlan(plan), fFolders(plan, root, descriptors, &made) {}

Result<Descriptor> FileMaker::Create(NodeId node) {
  const Entry& entry = fPlan.EntryOf(node);
  const int folder = fFolders.Open(fPlan.tree[node].parent);
  if (folder < 0) return FailedCall("make the folder of the entry", entry.name);
  Descriptor file(openat(folder, CName(fPlan.tree[node].name),
                         O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, entry.mode));
  if (!file) return FailedCall("create", entry.name);
  return file;
}

Status FileMaker::Complete(Descriptor file, const Entry& entry) {
  const timespec times[2] = {{0, UTIME_OMIT}, {entry.modified, 0}};
  if (futimens(file.Get(), times) != 0) return FailedCall("set the time of", entry.name);
  return file.Close() ? Status() : FailedCall("write", entry.name);
}

}  // namespace archive
