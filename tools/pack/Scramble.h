// SPDX-License-Identifier: MIT
// The positional scrambling of packaged files, and the pieces of a split set.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace pack {

/// Adds 1 to every second byte, the first one excluded.
std::string Scramble(std::string clear);

struct Piece {
  std::string name;
  std::uintmax_t size = 0;
};

/// How a file is cut: the sizes of its first pieces in order, the remainder last.
struct Split {
  std::vector<std::uintmax_t> sizes;  ///< none: the file stays whole
  bool repeat = false;                ///< the last size counts for all further pieces too
};

/// The pieces of a Payload of `total` bytes: "Data2" alone, or "Data#1", "Data#2" ... "Data#End". A Payload
/// that fits into the first piece stays whole.
std::vector<Piece> PlanPieces(std::uintmax_t total, const Split& split);

/// Scrambles the file `clear` as one stream and writes it as `pieces`, the first into the folder `first`, the
/// others into `others`. The sizes add up to the file's. Memory doesn't depend on them.
void ScrambleFile(const std::filesystem::path& clear, const std::vector<Piece>& pieces,
                  const std::filesystem::path& first, const std::filesystem::path& others);

}  // namespace pack
