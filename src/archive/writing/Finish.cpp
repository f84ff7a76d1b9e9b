// SPDX-License-Identifier: MIT
// Completes the tree in the staging folder.
#include "archive/writing/Finish.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace archive {
namespace {

bool SetModified(int folder, const char* name, std::int64_t seconds) {
  const timespec times[2] = {{0, UTIME_OMIT}, {seconds, 0}};
  return utimensat(folder, name, times, AT_SYMLINK_NOFOLLOW) == 0;
}

Status MakeLinks(const Plan& plan, FolderCache& folders) {
  for (const Link& link : plan.links) {
    const Entry& entry = plan.EntryOf(link.node);
    const CName name(plan.tree[link.node].name);
    const int folder = folders.Open(plan.tree[link.node].parent);
    if (folder < 0) return FailedCall("make the folder of the entry", entry.name);
    if (symlinkat(link.target.c_str(), folder, name) != 0 || !SetModified(folder, name, entry.modified))
      return FailedCall("make the link", entry.name);
  }
  return {};
}

}  // namespace

Status FinishTree(const Plan& plan, int root, MadeFolders& made, const Publisher& publisher) {
  constexpr std::size_t kDescriptors = 64;
  FolderCache folders(plan, root, kDescriptors, &made);
  Status status = MakeLinks(plan, folders);
  if (!status.Ok()) return status;
  const std::vector<Node>& nodes = plan.tree.Nodes();
  for (NodeId node = kRoot + 1; node < nodes.size(); ++node)
    if (nodes[node].kind == Kind::Folder && !made.IsMade(node) && folders.Open(node) < 0)
      return FailedCall("make the folder", plan.tree.Path(node));

  for (NodeId node = static_cast<NodeId>(nodes.size()); --node > kRoot;) {  // the deepest first
    if (nodes[node].kind != Kind::Folder || nodes[node].entry == Node::kNoEntry) continue;
    const CName name(nodes[node].name);
    const int parent = folders.Open(nodes[node].parent);
    const bool now = ForbidsOwner(plan, node) && !publisher.IsRenamed(node);
    if (parent < 0 || !SetModified(parent, name, plan.EntryOf(node).modified) ||
        (now && !SetMode(parent, name, FolderMode(plan, node))))
      return FailedCall("set the time and mode of the folder", plan.tree.Path(node));
  }
  return {};
}

}  // namespace archive
