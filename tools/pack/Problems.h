// SPDX-License-Identifier: MIT
// What is wrong with a description, gathered so that all of it is told at once.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "pack/JsonPlaces.h"
#include "pack/Refusal.h"

namespace pack {

class Problems {
 public:
  /// As for Refusal. What is told a second time about the same key stays out.
  void Add(const std::string& subject, const std::string& why);

  /// Does `work`, and keeps what it refuses. Says whether it came to its end.
  template <typename Work>
  bool Try(Work work) {
    try {
      work();
      return true;
    } catch (const Refusal& refusal) {
      fList.push_back(refusal);
      return false;
    }
  }

  std::size_t Count() const { return fList.size(); }

  void ThrowFirst() const {
    if (!fList.empty()) throw fList.front();
  }
  /// Throws Mistakes if there are any, in the order in which they stand in `file`.
  void Tell(const std::filesystem::path& file, const JsonPlaces& places) const;

 private:
  std::vector<Refusal> fList;
};

}  // namespace pack
