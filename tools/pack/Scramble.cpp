// SPDX-License-Identifier: MIT
// Scrambling of strings and of files, whole or in pieces.
#include "pack/Scramble.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "base/Scramble.h"
#include "pack/Interrupt.h"
#include "pack/Refusal.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferSize = 1 << 20;
constexpr std::size_t kMostPieces = 999;

// Moves `size` bytes, which begin at `position` of the whole stream.
void ScramblePiece(std::ifstream& in, const fs::path& to, std::uintmax_t position, std::uintmax_t size) {
  std::ofstream out(to, std::ios::binary | std::ios::trunc);
  std::string buffer;
  for (std::uintmax_t done = 0; done < size && out; done += buffer.size()) {
    buffer.resize(static_cast<std::size_t>(std::min<std::uintmax_t>(kBufferSize, size - done)));
    if (!in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())))
      throw std::runtime_error("The archive can't be read back.");
    CheckInterrupted();
    ScrambleBytes(buffer.data(), buffer.size(), position + done);
    out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
  }
  out.close();
  if (!out) throw Refusal(to.string(), "can't be written");
}

}  // namespace

std::string Scramble(std::string clear) {
  ScrambleBytes(clear.data(), clear.size(), 0);
  return clear;
}

std::vector<Piece> PlanPieces(std::uintmax_t total, const Split& split) {
  std::vector<Piece> pieces;
  for (std::uintmax_t rest = total; rest > 0;) {
    std::uintmax_t size = rest;
    if (pieces.size() < split.sizes.size()) {
      size = split.sizes[pieces.size()];
    } else if (split.repeat) {
      size = split.sizes.back();
    }
    size = std::min(size, rest);
    rest -= size;
    pieces.push_back({"Data#" + std::to_string(pieces.size() + 1), size});
    if (pieces.size() > kMostPieces)
      throw Refusal("payload", "would be split into more than " + std::to_string(kMostPieces) + " pieces");
  }
  if (pieces.size() < 2) return {{"Data2", total}};
  pieces.back().name = "Data#End";
  return pieces;
}

void ScrambleFile(const fs::path& clear, const std::vector<Piece>& pieces, const fs::path& first,
                  const fs::path& others) {
  std::ifstream in(clear, std::ios::binary);
  std::uintmax_t position = 0;
  for (const Piece& piece : pieces) {
    const fs::path& folder = &piece == &pieces.front() ? first : others;
    ScramblePiece(in, folder / piece.name, position, piece.size);
    position += piece.size;
  }
}

}  // namespace pack
