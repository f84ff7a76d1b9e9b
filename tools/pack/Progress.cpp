// SPDX-License-Identifier: MIT
#include "pack/Progress.h"

#include <unistd.h>

#include <cmath>

namespace pack {
namespace {

void Put(int terminal, const std::string& text) {
  // Who looks at it no more misses nothing.
  static_cast<void>(::write(terminal, text.data(), text.size()) < 0);
}

}  // namespace

std::string Grouped(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, ",");
  return digits;
}

std::string ProgressText(std::uint64_t files, std::uint64_t done, std::uint64_t bytes, double left) {
  constexpr std::uint64_t kMega = 1'000'000;
  std::string text = "Packing: " + Grouped(files) + (files == 1 ? " file, " : " files, ") +
                     Grouped(done / kMega) + " of " + Grouped((bytes + kMega - 1) / kMega) + " MB";
  if (left >= 0) text += ", " + Grouped(static_cast<std::uint64_t>(std::llround(left))) + " s left";
  return text;
}

Progress& Progress::Current() {
  static Progress progress;
  return progress;
}

void Progress::Begin(std::uint64_t bytes) {
  if (fBytes == 0) fStart = fLast = Clock::now();
  fBytes += bytes;
}

void Progress::Packed(std::uint64_t bytes) {
  constexpr std::chrono::milliseconds kStep(200);
  fDone += bytes;
  const Clock::time_point now = Clock::now();
  if (fTerminal < 0 || now - fLast < kStep) return;
  fLast = now;
  fShown = true;
  const double took = std::chrono::duration<double>(now - fStart).count();
  const bool known = took > 1 && fDone > 0;
  const double left = known ? took * static_cast<double>(fBytes - fDone) / static_cast<double>(fDone) : -1;
  Put(fTerminal, "\r" + ProgressText(fFiles, fDone, fBytes, left) + "\x1b[K");
}

void Progress::Clear() {
  if (fShown) Put(fTerminal, "\r\x1b[K");
  fShown = false;
}

}  // namespace pack
