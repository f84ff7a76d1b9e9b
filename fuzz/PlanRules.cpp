// SPDX-License-Identifier: MIT
// The rules of a plan: names, links, data ranges, jobs.
#include "fuzz/PlanRules.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "archive/writing/Jobs.h"
#include "fuzz/Bytes.h"

namespace fuzz {
namespace {

using archive::Entry;
using archive::Kind;
using archive::kNoNode;
using archive::kRoot;
using archive::NodeId;
using archive::Plan;

/// The items of each folder by their names.
using Held = std::map<std::pair<NodeId, std::string_view>, NodeId>;

Held CheckNames(const Plan& plan) {
  Held held;
  const std::vector<archive::Node>& nodes = plan.tree.Nodes();
  std::set<std::uint32_t> entries;
  for (NodeId node = kRoot + 1; node < nodes.size(); ++node) {
    const std::string_view name = nodes[node].name;
    if (name.empty() || name == "." || name == ".." || name.size() > 255) Broken("a name is a name", name);
    for (const char c : name)
      if (c == '/' || (c >= 0 && c < ' ') || c == '\x7F') Broken("a name has no such character", name);
    if (nodes[node].parent >= node) Broken("a folder stands before what it holds", name);
    if (nodes[nodes[node].parent].kind != Kind::Folder) Broken("an item lies in a folder", name);
    if (!held.emplace(std::pair(nodes[node].parent, name), node).second) Broken("names differ", name);
    if (nodes[node].parent == kRoot && archive::IsStagingName(name)) Broken("staging is not shared", name);
    if (nodes[node].entry == archive::Node::kNoEntry) {
      if (nodes[node].kind != Kind::Folder) Broken("only a folder has no entry", name);
      continue;
    }
    const Entry& entry = plan.EntryOf(node);
    if (!entries.insert(nodes[node].entry).second) Broken("an entry makes one item", name);
    if (entry.kind != nodes[node].kind || entry.leftOut) Broken("an item is what its entry says", name);
    if (plan.tree.Path(node) != entry.name || entry.name.size() > 4095) Broken("a path is the entry's", name);
    if (entry.mode > 0777) Broken("a mode has no special bits", name);
  }
  return held;
}

/// Walks as the kernel does: a link's target takes the place of the link in the rest of the way.
void CheckLink(const Plan& plan, const Held& held, const std::map<NodeId, std::string_view>& targets,
               const archive::Link& link) {
  constexpr unsigned kMostHops = 40;
  NodeId at = plan.tree[link.node].parent;
  unsigned hops = 1;
  std::string way = link.target;
  while (!way.empty()) {
    if (way.front() == '/') Broken("a link is relative", link.target);
    const std::string name = way.substr(0, way.find('/'));
    way.erase(0, way.find_first_not_of('/', name.size()));
    if (name == ".") continue;
    if (name == "..") {
      if (at == kRoot || at == kNoNode) Broken("a link stays inside", link.target);
      at = plan.tree[at].parent;
      continue;
    }
    const auto found = held.find({at, name});
    const NodeId next = found == held.end() ? kNoNode : found->second;
    const auto target = targets.find(next);
    if (target == targets.end()) {
      at = next;
      continue;
    }
    if (++hops > kMostHops) Broken("a link is followed to its end", link.target);
    way = std::string(target->second) + (way.empty() ? "" : "/" + way);
  }
}

void CheckLinks(const Plan& plan, const Held& held) {
  std::map<NodeId, std::string_view> targets;
  for (const archive::Link& link : plan.links) {
    const bool usable = !link.target.empty() && link.target.find('\0') == std::string::npos;
    if (!usable || link.target.size() > 4095) Broken("a link has a usable target", link.target);
    if (plan.tree[link.node].kind != Kind::Link) Broken("a link is a link", link.target);
    if (!targets.emplace(link.node, link.target).second) Broken("a link has one target", link.target);
  }
  for (const archive::Link& link : plan.links) CheckLink(plan, held, targets, link);
}

void CheckRanges(const Plan& plan, const archive::Source& source) {
  std::vector<std::pair<std::uint64_t, std::uint64_t>> ranges;
  for (const Entry& entry : plan.directory.entries) {
    if (entry.data < entry.header + 30 + entry.storedName.size())
      Broken("data follows its header", entry.name);
    if (entry.data > source.Size() || entry.compressed > source.Size() - entry.data)
      Broken("data lies inside of the archive", entry.name);
    if (!entry.Deflated() && entry.compressed != entry.size) Broken("stored data has one length", entry.name);
    ranges.emplace_back(entry.header, entry.data + entry.compressed);
  }
  std::sort(ranges.begin(), ranges.end());
  for (std::size_t i = 1; i < ranges.size(); ++i)
    if (ranges[i].first < ranges[i - 1].second) Broken("no two entries share bytes");
}

/// Every file is dealt out once, and a run fits into the room that a worker has for it.
void CheckJobs(const Plan& plan) {
  std::set<NodeId> files(plan.files.begin(), plan.files.end());
  std::size_t expected = 0;
  for (const archive::Node& node : plan.tree.Nodes()) expected += node.kind == Kind::File;
  if (files.size() != expected || plan.files.size() != expected) Broken("every file is in the plan once");
  std::uint64_t bytes = 0;
  archive::Jobs jobs(plan, 2);
  while (const archive::Job* job = jobs.Next(1)) {
    const std::uint64_t start = plan.EntryOf(plan.files[job->first]).data;
    for (std::size_t i = job->first; i < job->first + job->count; ++i) {
      const Entry& entry = plan.EntryOf(plan.files[i]);
      if (files.erase(plan.files[i]) != 1 || plan.tree[plan.files[i]].kind != Kind::File)
        Broken("a file is written once", entry.name);
      if (job->way == archive::Job::Way::Whole &&
          (entry.data < start || entry.data + entry.compressed - start + entry.size > jobs.Room()))
        Broken("a run fits", entry.name);
      bytes += entry.size;
    }
  }
  if (!files.empty()) Broken("every file is written");
  if (bytes != plan.bytes) Broken("the plan's length is that of its files");
}

}  // namespace

void CheckPlan(const Plan& plan, const archive::Source& source) {
  CheckLinks(plan, CheckNames(plan));
  CheckRanges(plan, source);
  CheckJobs(plan);
}

}  // namespace fuzz
