// SPDX-License-Identifier: MIT
// The planning pass, step by step.
#include "archive/planning/Plan.h"

#include <algorithm>

#include "archive/planning/Solid.h"
#include "archive/reading/EndRecord.h"
#include "archive/reading/FrameSource.h"
#include "archive/reading/Inflate.h"
#include "archive/reading/LocalHeaders.h"
#include "archive/reading/Wrapped.h"

namespace archive {
namespace {

/// Reads the targets of links, which are the data of their entries.
class TargetReader {
 public:
  explicit TargetReader(const Source& source) : fSource(source), fInflater(fNever) {}

  Result<std::string> Read(const Entry& entry) {
    constexpr std::size_t kPackedRoom = 2 * kLongestTarget;
    if (entry.size > kLongestTarget || entry.compressed > kPackedRoom)
      return Fail("the link ", Quoted(entry.name), " has too long a target");
    if ((fAll += entry.size) > kMostBytes) return Fail("the archive's links have too long targets");
    unsigned char packed[kPackedRoom], room[kLongestTarget];
    if (!fSource.ReadAt(entry.data, packed, entry.compressed))
      return FailedCall("read the target of the link", entry.name);
    Result<Bytes> target = fInflater.Whole({packed, entry.compressed}, entry, room);
    if (!target.Ok()) return target.Failure();
    return std::string(target->begin(), target->end());
  }

 private:
  static constexpr std::uint64_t kMostBytes = 16 << 20;
  const std::atomic<bool> fNever{false};
  const Source& fSource;
  Inflater fInflater;
  std::uint64_t fAll = 0;
};

Status AddItems(Plan& plan, const std::atomic<bool>* stop) {
  const std::vector<Entry>& entries = plan.directory.entries;
  plan.tree.Reserve(entries.size());
  for (std::uint32_t i = 0; i < entries.size(); ++i) {
    const Entry& entry = entries[i];
    if (Stopped(stop)) return Interrupted();
    if (entry.leftOut) continue;
    if (IsStagingName(entry.name.substr(0, entry.name.find('/'))))
      return Fail("the entry ", Quoted(entry.name), " has a name that is kept for expanding");
    Status status = plan.tree.Add(entry, i);
    if (!status.Ok()) return status;
  }
  return {};
}

Status CollectFilesAndLinks(const Source& source, Plan& plan) {
  TargetReader targets(source);
  const std::vector<Node>& nodes = plan.tree.Nodes();
  std::vector<NodeId> links;
  for (NodeId node = kRoot + 1; node < nodes.size(); ++node) {
    if (nodes[node].kind == Kind::Folder) continue;
    const Entry& entry = plan.EntryOf(node);
    if (nodes[node].kind == Kind::File) {
      plan.files.push_back(node);
      if (__builtin_add_overflow(plan.bytes, entry.size, &plan.bytes))
        return Fail("the entry ", Quoted(entry.name), " is too large");
      continue;
    }
    links.push_back(node);
  }
  const auto before = [&](NodeId a, NodeId b) { return plan.EntryOf(a).data < plan.EntryOf(b).data; };
  if (!std::is_sorted(plan.files.begin(), plan.files.end(), before))
    std::sort(plan.files.begin(), plan.files.end(), before);
  // In the order of the file: a frame that holds many of them is decoded once.
  std::sort(links.begin(), links.end(), before);
  for (const NodeId node : links) {
    Result<std::string> target = targets.Read(plan.EntryOf(node));
    if (!target.Ok()) return target.Failure();
    plan.links.push_back({node, std::move(*target)});
  }
  return {};
}

Result<DirectoryPlace> ReadDirectoryInto(Plan& plan, const Source& source, const std::atomic<bool>* stop) {
  Result<DirectoryPlace> place = FindDirectory(source);
  if (!place.Ok()) return place;
  // Packed, it takes next to nothing of the file that it bounds otherwise.
  constexpr std::uint64_t kMostUnpacked = 256 << 20;
  if (!source.IsCheap() && place->length > kMostUnpacked) return Fail("the archive's directory is too large");
  Result<Directory> directory = ReadDirectory(source, *place, stop);
  if (!directory.Ok()) return directory.Failure();
  plan.directory = std::move(*directory);
  return place;
}

Result<Plan> PlanZip(const Source& source, unsigned threads, const std::atomic<bool>* stop) {
  Plan plan;
  Result<DirectoryPlace> place = ReadDirectoryInto(plan, source, stop);
  if (!place.Ok()) return place.Failure();
  std::vector<Entry>& entries = plan.directory.entries;
  if (place->wrapped) {
    Status status = RecoverWrapped(source, entries, place->start, stop);
    if (!status.Ok()) return status;
  }
  Status added;
  Status status = CheckLocalHeaders(source, entries, OrderInFile(entries), place->start, threads, stop,
                                    [&] { added = AddItems(plan, stop); });
  if (status.Ok()) status = added;
  if (status.Ok()) status = CollectFilesAndLinks(source, plan);
  if (status.Ok()) status = CheckLinks(plan.tree, plan.links, plan.linkedTo);
  if (!status.Ok()) return status;
  return plan;
}

Result<Plan> PlanSolid(const FrameSource& content, const std::atomic<bool>* stop) {
  Plan plan;
  Result<DirectoryPlace> place = ReadDirectoryInto(plan, content, stop);
  if (!place.Ok()) return place.Failure();
  std::vector<Entry>& entries = plan.directory.entries;
  plan.solid.order = OrderInFile(entries);
  Status status = PlaceEntries(*place, plan.solid.order, entries);
  if (status.Ok()) status = AddItems(plan, stop);
  if (status.Ok()) status = CollectFilesAndLinks(content, plan);
  if (status.Ok()) status = CheckLinks(plan.tree, plan.links, plan.linkedTo);
  if (!status.Ok()) return status;
  plan.solid.nodes.assign(entries.size(), kNoNode);
  for (const NodeId node : plan.files) plan.solid.nodes[plan.tree[node].entry] = node;
  return plan;
}

}  // namespace

bool IsStagingName(std::string_view name) {
  constexpr std::string_view kPrefix = ".ditto-";
  constexpr std::size_t kRandomDigits = 16;
  const std::size_t dash = name.rfind('-');
  if (!name.starts_with(kPrefix) || dash < kPrefix.size()) return false;
  const std::string_view process = name.substr(kPrefix.size(), dash - kPrefix.size());
  const std::string_view random = name.substr(dash + 1);
  return !process.empty() && process.find_first_not_of("0123456789") == process.npos &&
         random.size() == kRandomDigits && random.find_first_not_of("0123456789abcdef") == random.npos;
}

Result<Plan> ReadPlan(const Source& source, unsigned threads, const std::atomic<bool>* stop) {
  if (!IsZstandard(source)) return PlanZip(source, threads, stop);
  Result<std::vector<Frame>> frames = ReadFrames(source);
  if (!frames.Ok()) return frames.Failure();
  const FrameSource content(source, *frames, stop);
  if (IsZstandard(content)) return Fail("the archive is packed twice");
  Result<Plan> plan = PlanSolid(content, stop);
  if (Stopped(stop)) return Interrupted();
  if (plan.Ok()) plan->solid.frames = std::move(*frames);
  return plan;
}

}  // namespace archive
