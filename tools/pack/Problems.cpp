// SPDX-License-Identifier: MIT
#include "pack/Problems.h"

#include <algorithm>
#include <map>

namespace pack {

void Problems::Add(const std::string& subject, const std::string& why) {
  const Refusal refusal(subject, why);
  const auto same = [&](const Refusal& told) { return std::string_view(told.what()) == refusal.what(); };
  if (std::none_of(fList.begin(), fList.end(), same)) fList.push_back(refusal);
}

void Problems::Tell(const std::filesystem::path& file, const JsonPlaces& places) const {
  if (fList.empty()) return;
  std::multimap<Place, std::string> sorted;
  for (const Refusal& refusal : fList) sorted.emplace(places.Of(refusal.Subject()), refusal.what());
  std::string lines;
  for (const auto& [place, sentence] : sorted)
    lines += (lines.empty() ? "" : "\n") + Located(file.string(), place, sentence);
  throw Mistakes(lines);
}

}  // namespace pack
