// SPDX-License-Identifier: MIT
// Times a picture of 2000 by 1500 from its pixel string against memcpy of its hexadecimal text, and prints
// the best milliseconds of both. The picture is noise with runs, as a drawing with plain areas has them.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "package/PixelStrings.h"

namespace {

constexpr int kWidth = 2000, kHeight = 1500, kRounds = 15;
constexpr std::size_t kDigits = 6 * std::size_t{kWidth} * kHeight;

template <typename Work>
double BestMilliseconds(Work work) {
  double best = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    best = std::min(best, taken.count());
  }
  return best;
}

/// `digits` is what the string expands to.
std::string MakePixels(bool runs, std::string& digits) {
  std::mt19937 random(1);
  std::string pixels;
  while (digits.size() < kDigits) {
    const char digit = "0123456789ABCDEF"[random() % 16];
    const std::size_t count =
        runs && random() % 8 == 0 ? std::min<std::size_t>(random() % 200 + 1, kDigits - digits.size()) : 1;
    digits.append(count, digit);
    pixels += digit;
    if (count > 1) pixels += "[" + std::to_string(count) + "]";
  }
  return pixels;
}

}  // namespace

int main() {
  for (const bool runs : {false, true}) {
    std::string digits;
    const std::string pixels = MakePixels(runs, digits);
    bool whole = true;
    // The first touch of a fresh page belongs to both.
    const double ours =
        BestMilliseconds([&] { whole = whole && DecodePicture(kWidth, kHeight, pixels).has_value(); });
    const double copy = BestMilliseconds([&] {
      std::vector<char> target;
      target.resize(digits.size());
      std::memcpy(target.data(), digits.data(), digits.size());
      whole = whole && target[digits.size() / 2] == digits[digits.size() / 2];
    });
    if (!whole) return 1;
    std::printf("%s %.2f %.2f\n", runs ? "runs" : "plain", ours, copy);
  }
  return 0;
}
