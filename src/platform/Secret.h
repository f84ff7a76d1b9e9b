// SPDX-License-Identifier: MIT
// A text that leaves no trace in memory.
#pragma once

#include <cstring>
#include <string_view>
#include <vector>

/// Its bytes are overwritten when it goes, and before they would move.
class Secret {
 public:
  Secret() = default;
  /// A copy; the caller wipes what it copied from.
  explicit Secret(std::string_view text) : fBytes(text.begin(), text.end()) {}
  Secret(Secret&& other) noexcept : fBytes(std::move(other.fBytes)) {}
  Secret& operator=(Secret&&) = delete;
  ~Secret() {
    if (!fBytes.empty()) ::explicit_bzero(fBytes.data(), fBytes.size());
  }
  std::string_view View() const { return {fBytes.data(), fBytes.size()}; }

 private:
  std::vector<char> fBytes;
};
