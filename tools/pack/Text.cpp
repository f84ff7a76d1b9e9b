// SPDX-License-Identifier: MIT
#include "pack/Text.h"

#include <cstddef>

namespace pack {

std::string WithLineFeeds(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      out += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != '\n') {
      out += '\n';
    }
  }
  return out;
}

std::string LowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return out;
}

}  // namespace pack
