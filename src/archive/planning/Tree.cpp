// SPDX-License-Identifier: MIT
// Builds the tree through a hash table over (folder, name).
#include "archive/planning/Tree.h"

#include <unistd.h>

#include <bit>

#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

/// Folders that no entry states; more of them than this are no ordinary archive.
constexpr std::uint64_t kMostImplied = 1'000'000;

std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  const unsigned __int128 product =
      static_cast<unsigned __int128>(a ^ 0x9E3779B97F4A7C15u) * (b ^ 0xD6E8FEB86659FD93u);
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Seeded, so that nobody can choose names that all fall into one slot.
std::uint64_t Hash(std::uint64_t seed, NodeId folder, std::string_view name) {
  std::uint64_t hash = Mix(seed, folder + (std::uint64_t{name.size()} << 32));
  while (name.size() >= 8) {
    hash = Mix(hash ^ seed, Load64(name.data()));
    name.remove_prefix(8);
  }
  std::uint64_t rest = 0;
  std::memcpy(&rest, name.data(), name.size());
  return Mix(hash ^ seed, rest);
}

}  // namespace

Tree::Tree() : fSeed(0x5851F42D4C957F2D) {
  // An unseeded table is slower under attack, not wrong.
  if (getentropy(&fSeed, sizeof fSeed) != 0) fSeed ^= 1;
  fNodes.emplace_back();
  Grow(1024);
}

void Tree::Reserve(std::size_t items) {
  fNodes.reserve(items + items / 8 + 1);
  Grow(std::bit_ceil(items * 2 + 1024));
}

void Tree::Grow(std::size_t slots) {
  fSlots.assign(slots, kNoNode);
  for (NodeId node = kRoot + 1; node < fNodes.size(); ++node)
    fSlots[Slot(fNodes[node].parent, fNodes[node].name)] = node;
}

std::size_t Tree::Slot(NodeId folder, std::string_view name) const {
  std::size_t slot = Hash(fSeed, folder, name) & (fSlots.size() - 1);
  while (fSlots[slot] != kNoNode) {
    const Node& node = fNodes[fSlots[slot]];
    if (node.parent == folder && node.name == name) break;
    slot = (slot + 1) & (fSlots.size() - 1);
  }
  return slot;
}

NodeId Tree::Find(NodeId folder, std::string_view name) const {
  return fSlots[Slot(folder, name)];
}

NodeId Tree::Insert(NodeId folder, std::string_view name, std::size_t slot) {
  const NodeId node = static_cast<NodeId>(fNodes.size());
  Node& made = fNodes.emplace_back();
  made.name = name;
  made.parent = folder;
  fSlots[slot] = node;
  if (fNodes.size() * 3 > fSlots.size() * 2) Grow(fSlots.size() * 2);
  return node;
}

Result<NodeId> Tree::FolderOf(const Entry& entry) {
  const std::size_t slash = entry.name.rfind('/');
  if (slash == std::string_view::npos) return kRoot;
  const std::string_view whole = entry.name.substr(0, slash);
  if (whole == fLastFolder) return fLastNode;
  NodeId folder = kRoot;
  for (std::string_view rest = whole; !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find('/'));
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    const std::size_t slot = Slot(folder, name);
    if (fSlots[slot] == kNoNode) {
      if (++fImplied > kMostImplied) return Fail("the archive names too many folders");
      folder = Insert(folder, name, slot);
    } else {
      folder = fSlots[slot];
      if (fNodes[folder].kind != Kind::Folder)
        return Fail("the entry ", Quoted(entry.name), " leads through an item that is no folder");
    }
  }
  fLastFolder = whole;
  fLastNode = folder;
  return folder;
}

Status Tree::Add(const Entry& entry, std::uint32_t index) {
  Result<NodeId> folder = FolderOf(entry);
  if (!folder.Ok()) return folder.Failure();
  const std::string_view name = entry.name.substr(entry.name.rfind('/') + 1);
  const std::size_t slot = Slot(*folder, name);
  NodeId node = fSlots[slot];
  if (node == kNoNode) {
    node = Insert(*folder, name, slot);
    fNodes[node].kind = entry.kind;
  } else if (fNodes[node].kind != Kind::Folder || entry.kind != Kind::Folder) {
    return Fail("the archive holds two items of the name ", Quoted(entry.name));
  } else if (fNodes[node].entry != Node::kNoEntry) {
    return Fail("the archive holds the folder ", Quoted(entry.name), " twice");
  }
  fNodes[node].entry = index;
  return {};
}

std::string Tree::Path(NodeId node) const {
  std::string path(fNodes[node].name);
  while (fNodes[node].parent != kRoot) {
    node = fNodes[node].parent;
    path = std::string(fNodes[node].name) + "/" + path;
  }
  return path;
}

}  // namespace archive
