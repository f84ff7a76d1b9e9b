// SPDX-License-Identifier: MIT
// Text as the records store it.
#include "pack/Text.h"

#include <cstddef>

#include "base/Encoding.h"

namespace pack {
namespace {

void AppendHexUnit(std::string& out, unsigned unit) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const unsigned shift : {4U, 0U, 12U, 8U}) out += kDigits[(unit >> shift) & 0xF];
}

}  // namespace

std::optional<std::u32string> DecodeUtf8(std::string_view utf8) {
  constexpr char32_t kLast = 0x10FFFF;
  std::u32string out;
  for (std::size_t at = 0; at < utf8.size();) {
    out += NextCharacter(utf8, at);
    if (out.back() > kLast) return std::nullopt;
  }
  return out;
}

std::string ToHexUtf16(std::string_view utf8) {
  std::string out;
  const std::u32string characters = DecodeUtf8(utf8).value();
  for (const char32_t c : characters) {
    if (c < 0x10000) {
      AppendHexUnit(out, c);
    } else {
      AppendHexUnit(out, 0xD800 + ((c - 0x10000) >> 10));
      AppendHexUnit(out, 0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return out;
}

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

bool ContainsIgnoringCase(std::string_view text, std::string_view needle) {
  return LowerAscii(text).find(LowerAscii(needle)) != std::string::npos;
}

}  // namespace pack
