// SPDX-License-Identifier: MIT
// Checks the places of items, then renames the items into them.
#include "archive/writing/Publisher.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/SystemFiles.h"

namespace archive {
namespace {

constexpr std::size_t kDescriptors = 8;

/// Fails with EEXIST where something stands. File systems without that kind of rename get a look first.
bool RenameToFree(int from, const char* name, int to, const char* newName) {
  if (RenameToFreeName(from, name, to, newName)) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  struct stat facts;
  if (fstatat(to, newName, &facts, AT_SYMLINK_NOFOLLOW) == 0) {
    errno = EEXIST;
    return false;
  }
  return errno == ENOENT && renameat(from, name, to, newName) == 0;
}

}  // namespace

Publisher::Publisher(const Plan& plan, int folder, bool mustBeNew, std::string expected)
    : fPlan(plan),
      fFolder(folder),
      fMustBeNew(mustBeNew),
      fExpected(std::move(expected)),
      fPlaces(plan, folder, kDescriptors),
      fMerged(plan.tree.Nodes().size()) {}

Status Publisher::Check() {
  if (faccessat(fFolder, ".", W_OK | X_OK, AT_EACCESS) != 0) return FailedCall("write to the target folder");
  fMerged.assign(fMerged.size(), false);
  fMerged[kRoot] = true;
  for (NodeId node = kRoot + 1; node < fMerged.size(); ++node) {
    Status status = IsRenamed(node) ? CheckPlace(node) : Status();
    if (!status.Ok()) return status;
  }
  return {};
}

Status Publisher::CheckPlace(NodeId node) {
  const CName name(fPlan.tree[node].name);
  const int place = fPlaces.Open(fPlan.tree[node].parent);
  struct stat facts;
  if (place < 0) return FailedCall("open the folder of", fPlan.tree.Path(node));
  if (fstatat(place, name, &facts, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT ? Status() : FailedCall("look at the place of", fPlan.tree.Path(node));
  if (fMustBeNew) return FindFreeName(node, place);
  const bool folder = fPlan.tree[node].kind == Kind::Folder;
  if (folder != S_ISDIR(facts.st_mode))
    return Fail("in the place of ", Quoted(fPlan.tree.Path(node)),
                folder ? " stands an item that is no folder" : " stands a folder");
  if (!folder && !S_ISREG(facts.st_mode) && !S_ISLNK(facts.st_mode))
    return Fail("in the place of ", Quoted(fPlan.tree.Path(node)), " stands a special file");
  if (!folder) return {};
  fMerged[node] = true;
  if (faccessat(place, name, W_OK | X_OK, AT_EACCESS) == 0) return {};
  if (facts.st_uid != geteuid()) return FailedCall("write to the folder", fPlan.tree.Path(node));
  fLocked.push_back({node, static_cast<std::uint16_t>(facts.st_mode & 07777)});
  return {};
}

bool Publisher::IsExpected(NodeId node) const {
  const std::string_view name = fPlan.tree[node].name;
  return fPlan.tree[node].parent == kRoot && (name == fExpected || name == fExpected + "Patch");
}

/// "Notes.txt" becomes "Notes 2.txt".
Status Publisher::FindFreeName(NodeId node, int place) {
  constexpr int kMostTries = 1000;
  const std::string name(fPlan.tree[node].name);
  const std::size_t dot = name.find_last_of('.');
  if (fPlan.linkedTo.contains(node))
    return Fail("the target folder holds ", Quoted(name), " already, and a link of the archive leads there");
  const std::size_t stem = dot == std::string::npos || dot == 0 ? name.size() : dot;
  for (int number = 2; !IsExpected(node) && number < kMostTries; ++number) {
    const std::string free = name.substr(0, stem) + " " + std::to_string(number) + name.substr(stem);
    struct stat facts;
    const bool isFree = fstatat(place, free.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT &&
                        fPlan.tree.Find(kRoot, free) == kNoNode;
    if (!isFree) continue;
    fFreeNames[node] = free;
    return {};
  }
  return Fail("the target folder holds ", Quoted(name), " already");
}

std::string Publisher::PlaceName(NodeId node) const {
  const auto found = fFreeNames.find(node);
  return found == fFreeNames.end() ? std::string(fPlan.tree[node].name) : found->second;
}

Status Publisher::Unlock(const Locked& locked) {
  const Node& node = fPlan.tree[locked.node];
  const int parent = fPlaces.Open(node.parent);
  return SetMode(parent, CName(node.name), locked.mode | S_IRWXU)
             ? Status()
             : FailedCall("write to the folder", fPlan.tree.Path(locked.node));
}

void Publisher::LockAgain() {
  for (; !fLocked.empty(); fLocked.pop_back()) {
    const Node& node = fPlan.tree[fLocked.back().node];
    // Nobody to tell any more.
    static_cast<void>(SetMode(fPlaces.Open(node.parent), CName(node.name), fLocked.back().mode));
  }
}

/// A file or a link that is replaced comes into the staging folder, from where it can be taken back.
bool Publisher::Rename(NodeId node, int from, int to) {
  const CName name(fPlan.tree[node].name);
  fMoved.push_back({node, false});
  if (RenameToFree(from, name, to, PlaceName(node).c_str())) return true;
  const bool replaces = errno == EEXIST && !fMustBeNew && fPlan.tree[node].kind != Kind::Folder;
  if (replaces && ExchangeItems(from, name, to, name)) {
    fMoved.back().exchanged = true;
    struct stat replaced;
    if (fstatat(from, name, &replaced, AT_SYMLINK_NOFOLLOW) == 0 && !S_ISDIR(replaced.st_mode)) return true;
    errno = EISDIR;  // a folder that came a moment ago goes back to its place with all that was moved
    return false;
  }
  fMoved.pop_back();
  // Without that kind of rename the old item can't be kept.
  return replaces && (errno == EINVAL || errno == ENOSYS) && renameat(from, name, to, name) == 0;
}

Status Publisher::Place(NodeId node, FolderCache& made) {
  const NodeId parent = fPlan.tree[node].parent;
  const int from = made.Open(parent), to = fPlaces.Open(parent);
  if (from < 0 || to < 0) return FailedCall("open the folder of", fPlan.tree.Path(node));
  if (!Rename(node, from, to)) return FailedCall("put into place", fPlan.tree.Path(node));
  // Not before: a folder can change its place only while its owner may write to it.
  if (ForbidsOwner(fPlan, node) && !SetMode(to, PlaceName(node).c_str(), FolderMode(fPlan, node)))
    return FailedCall("set the mode of", fPlan.tree.Path(node));
  return {};
}

Status Publisher::Publish(int staging) {
  Status status;
  for (std::size_t i = 0; i < fLocked.size() && status.Ok(); ++i) status = Unlock(fLocked[i]);
  FolderCache made(fPlan, staging, kDescriptors);
  for (const bool expected : {false, true})
    for (NodeId node = kRoot + 1; node < fMerged.size() && status.Ok(); ++node)
      if (IsRenamed(node) && !fMerged[node] && IsExpected(node) == expected) status = Place(node, made);
  if (!status.Ok()) TakeBack(made);
  LockAgain();
  return status;
}

void Publisher::TakeBack(FolderCache& made) {
  for (; !fMoved.empty(); fMoved.pop_back()) {
    const Node& node = fPlan.tree[fMoved.back().node];
    const CName name(node.name);
    const int staged = made.Open(node.parent), place = fPlaces.Open(node.parent);
    if (staged < 0 || place < 0) continue;
    const std::string placed = PlaceName(fMoved.back().node);
    // They were moved a moment ago; what can't be moved back stays, and the failure is reported anyway.
    if (ForbidsOwner(fPlan, fMoved.back().node)) static_cast<void>(SetMode(place, placed.c_str(), S_IRWXU));
    if (fMoved.back().exchanged)
      static_cast<void>(ExchangeItems(staged, name, place, name));
    else
      static_cast<void>(RenameToFree(place, placed.c_str(), staged, name));
  }
}

}  // namespace archive
