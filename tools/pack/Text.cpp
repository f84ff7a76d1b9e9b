// SPDX-License-Identifier: MIT
// Text as the records store it.
#include "pack/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace pack {
namespace {

// The upper half of Mac Roman, bytes 0x80 to 0xFF. 0xDB is the euro sign, as it has been since 1998;
// 0xF0 is a maker's logo in the private use area.
constexpr std::array<char16_t, 128> kMacRomanUpper = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

// Bytes of the sequence that `lead` opens; 0 for a byte that opens none.
int SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 0;
}

bool IsScalar(char32_t c, int length) {
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  return c >= kSmallest[static_cast<std::size_t>(length)] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

void AppendHexUnit(std::string& out, unsigned unit) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const unsigned shift : {4U, 0U, 12U, 8U}) out += kDigits[(unit >> shift) & 0xF];
}

}  // namespace

std::optional<std::u32string> DecodeUtf8(std::string_view utf8) {
  std::u32string out;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const int length = SequenceLength(lead);
    if (length == 0 || utf8.size() - i < static_cast<std::size_t>(length)) return std::nullopt;
    char32_t c = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (const char next : utf8.substr(i + 1, static_cast<std::size_t>(length) - 1)) {
      const auto byte = static_cast<unsigned char>(next);
      if ((byte & 0xC0) != 0x80) return std::nullopt;
      c = (c << 6) | (byte & 0x3FU);
    }
    if (!IsScalar(c, length)) return std::nullopt;
    i += static_cast<std::size_t>(length);
    out += c;
  }
  return out;
}

std::optional<std::string> ToMacRoman(std::string_view utf8) {
  std::string out;
  const std::u32string characters = DecodeUtf8(utf8).value();
  for (const char32_t c : characters) {
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    const auto* found = std::find(kMacRomanUpper.begin(), kMacRomanUpper.end(), c);
    if (found == kMacRomanUpper.end()) return std::nullopt;
    out += static_cast<char>(0x80 + std::distance(kMacRomanUpper.begin(), found));
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
