// SPDX-License-Identifier: MIT
// Which file shares most with those before it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <queue>
#include <vector>

namespace pack {

/// Files by their numbers, which are placed one after the other.
class Likeness {
 public:
  using Marks = std::vector<std::uint32_t>;
  /// What each file is known by: no mark twice.
  explicit Likeness(std::vector<Marks> files);

  bool IsPlaced(std::size_t file) const { return fFiles[file].placed; }
  void Place(std::size_t file);
  /// The file that shares the greatest part of itself with those that were placed since Forget; nothing where
  /// that part is too small to matter. The lower number where two share the same.
  std::optional<std::size_t> Next();
  /// What was placed so far is out of reach.
  void Forget();

 private:
  using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // mark, file
  struct File {
    std::size_t marks = 0;
    std::vector<std::uint32_t> groups;  // of the marks that other files have too
    std::uint32_t shared = 0;
    std::uint32_t epoch = 0;  // in which `shared` was counted
    bool placed = false;
  };
  struct Candidate {
    double part;
    std::uint32_t shared, file;
    bool operator<(const Candidate& other) const {
      return part != other.part ? part < other.part : file > other.file;
    }
  };
  void AddGroup(Pairs::const_iterator begin, Pairs::const_iterator end);
  void Count(std::uint32_t group, std::vector<std::uint32_t>& raised);

  std::vector<File> fFiles;
  std::vector<std::uint32_t> fMembers;  // the files of one group after the other
  std::vector<std::size_t> fStarts;     // of each group in these, and their end
  std::vector<std::uint32_t> fCounted;  // the epoch in which a group was
  std::uint32_t fEpoch = 1;
  std::priority_queue<Candidate> fCandidates;
};

}  // namespace pack
