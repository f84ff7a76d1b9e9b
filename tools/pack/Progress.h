// SPDX-License-Identifier: MIT
// The line that moves on a terminal while archives are packed.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace pack {

/// What is done and how long the rest takes: "Packing: 1,135 files, 37 of 503 MB, 12 s left". `left` is in
/// seconds; less than none where it can't be told yet.
std::string ProgressText(std::uint64_t files, std::uint64_t done, std::uint64_t bytes, double left);
/// "1,234,567"
std::string Grouped(std::uint64_t number);

/// One for the process, used by the thread that reads. Silent unless it is told where to show itself.
class Progress {
 public:
  static Progress& Current();
  void ShowOn(int terminal) { fTerminal = terminal; }
  /// One more archive begins, of so many bytes of content.
  void Begin(std::uint64_t bytes);
  /// So many bytes more are packed.
  void Packed(std::uint64_t bytes);
  void FileDone() { ++fFiles; }
  std::uint64_t Files() const { return fFiles; }
  /// Takes the line away.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;
  int fTerminal = -1;
  bool fShown = false;
  std::uint64_t fFiles = 0, fBytes = 0, fDone = 0;
  Clock::time_point fStart, fLast;
};

}  // namespace pack
