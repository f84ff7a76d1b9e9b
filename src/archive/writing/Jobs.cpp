// SPDX-License-Identifier: MIT
// Cuts the files into jobs.
#include "archive/writing/Jobs.h"

#include <algorithm>

#include "archive/reading/Inflate.h"

namespace archive {
namespace {

constexpr std::uint64_t kRunPacked = 256 << 10, kRunContent = 1 << 20;
constexpr std::size_t kRunFiles = 64;

/// Inflating into one piece instead of streaming saves a twentieth of the time: worth some memory.
constexpr std::size_t kMemory = 48 << 20, kLeastRoom = 2 << 20;
static_assert(kRunPacked <= kRunContent && 2 * kRunContent <= kLeastRoom);

bool Fits(const Plan& plan, const Job& run, const Entry& next) {
  const std::uint64_t start = plan.EntryOf(plan.files[run.first]).data;
  return run.count > 0 && run.count < kRunFiles && next.data + next.compressed - start <= kRunPacked &&
         run.bytes + next.size <= kRunContent;
}

Job::Way WayOf(const Entry& entry, std::uint64_t all, unsigned workers, std::size_t room) {
  if (entry.size > all / workers) return Job::Way::Shared;
  const bool fits = entry.compressed <= room && entry.size <= room - entry.compressed;
  return fits && entry.Deflated() && !MayBeLonger(entry) ? Job::Way::Whole : Job::Way::Streamed;
}

}  // namespace

Jobs::Jobs(const Plan& plan, unsigned workers) {
  workers = std::max(workers, 1U);
  fRoom = std::max(kMemory / workers, kLeastRoom);
  for (std::size_t i = 0; i < plan.files.size(); ++i) {
    const Entry& entry = plan.EntryOf(plan.files[i]);
    if (entry.size > kRunContent || entry.compressed > kRunContent) {
      fLarge.push_back({i, 1, entry.size, WayOf(entry, plan.bytes, workers, fRoom)});
      continue;
    }
    const bool neighbour = !fRuns.empty() && fRuns.back().first + fRuns.back().count == i;
    if (!neighbour || !Fits(plan, fRuns.back(), entry)) fRuns.push_back({i, 0, 0, Job::Way::Whole});
    ++fRuns.back().count;
    fRuns.back().bytes += entry.size;
  }
  std::stable_sort(fLarge.begin(), fLarge.end(),
                   [](const Job& a, const Job& b) { return a.bytes > b.bytes; });
  for (unsigned i = 0; i < workers; ++i) {
    fParts.push_back(std::make_unique<Part>());
    fParts.back()->begin = fParts.back()->next = fRuns.size() * i / workers;
    fParts.back()->end = fRuns.size() * (i + 1) / workers;
  }
}

const Job* Jobs::Next(unsigned worker) {
  if (fNextLarge < fLarge.size()) {
    const std::size_t large = fNextLarge++;
    if (large < fLarge.size()) return &fLarge[large];
  }
  for (std::size_t i = 0; i < fParts.size(); ++i) {
    Part& part = *fParts[(worker + i) % fParts.size()];
    if (part.next >= part.end) continue;
    const std::size_t run = part.next++;
    if (run < part.end) return &fRuns[run];
  }
  return nullptr;
}

}  // namespace archive
