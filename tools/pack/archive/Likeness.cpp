// SPDX-License-Identifier: MIT
// Counting of shared marks.
#include "pack/archive/Likeness.h"

#include <algorithm>
#include <utility>

namespace pack {
namespace {

// A mark of more files than these tells little, such as one in the licence on top of each.
constexpr std::ptrdiff_t kMostAlike = 64;
// Less than this part of a file isn't worth leaving the order of the names.
constexpr double kLeastPart = 0.05;

}  // namespace

Likeness::Likeness(std::vector<Marks> files) : fFiles(files.size()) {
  Pairs pairs;
  for (std::size_t i = 0; i < files.size(); ++i) {
    fFiles[i].marks = files[i].size();
    for (const std::uint32_t mark : files[i]) pairs.emplace_back(mark, static_cast<std::uint32_t>(i));
    files[i] = Marks();
  }
  std::sort(pairs.begin(), pairs.end());
  for (auto begin = pairs.cbegin(); begin != pairs.cend();) {
    const auto end = std::find_if(begin, pairs.cend(),
                                  [mark = begin->first](const auto& pair) { return pair.first != mark; });
    if (end - begin > 1 && end - begin <= kMostAlike) AddGroup(begin, end);
    begin = end;
  }
  fCounted.resize(fStarts.size());
  fStarts.push_back(fMembers.size());
}

void Likeness::AddGroup(Pairs::const_iterator begin, Pairs::const_iterator end) {
  for (auto i = begin; i != end; ++i)
    fFiles[i->second].groups.push_back(static_cast<std::uint32_t>(fStarts.size()));
  fStarts.push_back(fMembers.size());
  for (auto i = begin; i != end; ++i) fMembers.push_back(i->second);
}

void Likeness::Place(std::size_t file) {
  // A few marks could be shared by chance.
  constexpr double kChance = 8;
  fFiles[file].placed = true;
  std::vector<std::uint32_t> raised;
  for (const std::uint32_t group : fFiles[file].groups) Count(group, raised);
  std::sort(raised.begin(), raised.end());
  raised.erase(std::unique(raised.begin(), raised.end()), raised.end());
  for (const std::uint32_t i : raised)
    fCandidates.push(
        {fFiles[i].shared / (static_cast<double>(fFiles[i].marks) + kChance), fFiles[i].shared, i});
}

// A mark counts once, however many of the placed files have it.
void Likeness::Count(std::uint32_t group, std::vector<std::uint32_t>& raised) {
  if (fCounted[group] == fEpoch) return;
  fCounted[group] = fEpoch;
  for (std::size_t member = fStarts[group]; member < fStarts[group + 1]; ++member) {
    File& file = fFiles[fMembers[member]];
    if (file.placed) continue;
    if (file.epoch != fEpoch) file.shared = 0;
    file.epoch = fEpoch;
    ++file.shared;
    raised.push_back(fMembers[member]);
  }
}

std::optional<std::size_t> Likeness::Next() {
  while (!fCandidates.empty() && fCandidates.top().part >= kLeastPart) {
    const Candidate best = fCandidates.top();
    fCandidates.pop();
    // One that was raised since has another row in the queue.
    if (!fFiles[best.file].placed && fFiles[best.file].shared == best.shared) return best.file;
  }
  return std::nullopt;
}

void Likeness::Forget() {
  ++fEpoch;
  fCandidates = {};
}

}  // namespace pack
