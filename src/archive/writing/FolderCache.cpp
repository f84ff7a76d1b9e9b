// SPDX-License-Identifier: MIT
// Opens, makes and keeps folder descriptors.
#include "archive/writing/FolderCache.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace archive {

std::uint16_t FolderMode(const Plan& plan, NodeId node) {
  constexpr std::uint16_t kImplied = 0755;
  return plan.tree[node].entry == Node::kNoEntry ? kImplied : plan.EntryOf(node).mode;
}

bool ForbidsOwner(const Plan& plan, NodeId node) {
  return plan.tree[node].kind == Kind::Folder && (FolderMode(plan, node) & S_IRWXU) != S_IRWXU;
}

bool SetMode(int parent, const char* name, std::uint16_t mode) {
  return parent >= 0 && fchmodat(parent, name, mode, AT_SYMLINK_NOFOLLOW) == 0;
}

FolderCache::FolderCache(const Plan& plan, int root, std::size_t limit, MadeFolders* made)
    : fPlan(plan), fRoot(root), fMade(made), fSlots(std::max<std::size_t>(limit, 1)) {}

FolderCache::~FolderCache() {
  DropAllBut(-1);
}

int FolderCache::Open(NodeId folder) {
  fWay.clear();
  int at = fRoot;
  for (NodeId node = folder; node != kRoot; node = fPlan.tree[node].parent) {
    const auto known = fSlotOf.find(node);
    if (known != fSlotOf.end()) {
      fSlots[known->second].used = true;
      at = fSlots[known->second].descriptor;
      break;
    }
    fWay.push_back(node);
  }
  for (; !fWay.empty(); fWay.pop_back()) {
    const int next = OpenBelow(at, fWay.back());
    if (next < 0) return -1;
    Keep(fWay.back(), next);
    at = next;
  }
  return at;
}

int FolderCache::OpenBelow(int parent, NodeId folder) {
  const CName name(fPlan.tree[folder].name);
  if (fMade != nullptr && !fMade->IsMade(folder)) {
    // Writable for as long as it is being filled. Another worker may have been faster.
    const mode_t mode = FolderMode(fPlan, folder) | S_IRWXU;
    if (mkdirat(parent, name, mode) < 0 && errno != EEXIST) return -1;
    fMade->SetMade(folder);
  }
  const int flags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  int opened = openat(parent, name, flags);
  if (opened < 0 && (errno == EMFILE || errno == ENFILE)) {
    DropAllBut(parent);
    opened = openat(parent, name, flags);
  }
  return opened;
}

void FolderCache::Keep(NodeId folder, int descriptor) {
  while (fSlots[fHand].used) {
    fSlots[fHand].used = false;
    fHand = (fHand + 1) % fSlots.size();
  }
  Slot& slot = fSlots[fHand];
  if (slot.descriptor >= 0) {
    close(slot.descriptor);
    fSlotOf.erase(slot.node);
  }
  slot = {folder, descriptor, true};
  fSlotOf[folder] = fHand;
  fHand = (fHand + 1) % fSlots.size();
}

void FolderCache::DropAllBut(int descriptor) {
  for (Slot& slot : fSlots) {
    if (slot.descriptor < 0 || slot.descriptor == descriptor) continue;
    close(slot.descriptor);
    fSlotOf.erase(slot.node);
    slot = {};
  }
}

}  // namespace archive
