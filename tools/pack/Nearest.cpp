// SPDX-License-Identifier: MIT
// The distance is the number of letters that are wrong, missing, too many, or two that changed places.
#include "pack/Nearest.h"

#include <algorithm>

#include "pack/Text.h"

namespace pack {
namespace {

std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> table(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      table[i][j] = i + j;  // of an empty one
      if (i == 0 || j == 0) continue;
      const std::size_t other = a[i - 1] == b[j - 1] ? 0 : 1;
      table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + other});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
    }
  }
  return table[a.size()][b.size()];
}

}  // namespace

std::string DidYouMean(const std::string& word, const std::vector<std::string>& known) {
  constexpr std::size_t kLongest = 100;
  if (word.size() > kLongest) return "";
  const std::string* nearest = nullptr;
  std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (const std::string& candidate : known) {
    const std::size_t distance = Distance(LowerAscii(word), LowerAscii(candidate));
    if (distance >= least || distance >= candidate.size()) continue;
    least = distance;
    nearest = &candidate;
  }
  return nearest == nullptr ? "" : "; did you mean `" + *nearest + "`?";
}

}  // namespace pack
