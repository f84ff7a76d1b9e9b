// SPDX-License-Identifier: MIT
// Conversions between Mac Roman, Latin-1, UTF-16 and UTF-8.
#include "base/Encoding.h"

#include <algorithm>
#include <clocale>
#include <cwctype>
#include <iterator>

namespace {

/// Characters 128 to 255 of Mac Roman, as the encoding stands since it took in the euro sign.
constexpr char16_t kMacRoman[128] = {
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

constexpr char32_t kMalformed = 0x110000;

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

char32_t FromMacRoman(unsigned char byte) {
  return byte < 128 ? byte : kMacRoman[byte - 128];
}

/// Bytes of the sequence that `lead` begins, 0 when it can't begin one.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool IsScalar(char32_t character, std::size_t length) {
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  return character >= kSmallest[length] && character < 0x110000 && (character < 0xD800 || character > 0xDFFF);
}

}  // namespace

char32_t NextCharacter(std::string_view text, std::size_t& at) {
  const unsigned char lead = ByteAt(text, at);
  const std::size_t length = SequenceLength(lead);
  if (length == 1) {
    ++at;
    return lead;
  }
  char32_t character = length == 0 ? 0 : lead & (0xFFU >> (length + 1));
  bool wellFormed = length != 0 && at + length <= text.size();
  for (std::size_t i = 1; wellFormed && i < length; ++i) {
    const unsigned char byte = ByteAt(text, at + i);
    wellFormed = (byte & 0xC0U) == 0x80;
    character = character << 6U | (byte & 0x3FU);
  }
  if (!wellFormed || !IsScalar(character, length)) {
    ++at;
    return kMalformed + lead;
  }
  at += length;
  return character;
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6U);
    put(0x80 | (character & 0x3FU));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12U);
    put(0x80 | (character >> 6U & 0x3FU));
    put(0x80 | (character & 0x3FU));
  } else {
    put(0xF0 | character >> 18U);
    put(0x80 | (character >> 12U & 0x3FU));
    put(0x80 | (character >> 6U & 0x3FU));
    put(0x80 | (character & 0x3FU));
  }
}

std::string MacRomanToUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) AppendUtf8(text, FromMacRoman(static_cast<unsigned char>(byte)));
  return text;
}

std::optional<std::string> Utf8ToMacRoman(std::string_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = NextCharacter(text, at);
    const auto* found = std::find(std::begin(kMacRoman), std::end(kMacRoman), character);
    if (character >= 128 && found == std::end(kMacRoman)) return std::nullopt;
    bytes += static_cast<char>(
        character < 128 ? character : static_cast<char32_t>(128 + (found - std::begin(kMacRoman))));
  }
  return bytes;
}

std::string Latin1ToUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) AppendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

std::string Utf8ToLatin1(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = NextCharacter(text, at);
    bytes += character < 0x100 ? static_cast<char>(character) : '?';
  }
  return bytes;
}

std::string RepairUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const char32_t character = NextCharacter(bytes, at);
    const bool malformed = character >= kMalformed;
    AppendUtf8(text,
               malformed ? FromMacRoman(static_cast<unsigned char>(character - kMalformed)) : character);
  }
  return text;
}

std::string Utf16LittleEndianToUtf8(std::string_view bytes) {
  const auto unitAt = [bytes](std::size_t at) {
    return static_cast<char32_t>(ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8U);
  };
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t unit = unitAt(at);
    if (unit >= 0xD800 && unit < 0xE000) {
      const char32_t low = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
      const bool paired = unit < 0xDC00 && low >= 0xDC00 && low < 0xE000;
      unit = paired ? 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00) : 0xFFFD;
      if (paired) at += 2;
    }
    AppendUtf8(text, unit);
  }
  return text;
}

std::string Utf8ToUtf16LittleEndian(std::string_view text) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  const auto put = [&bytes](char32_t unit) {
    bytes += {static_cast<char>(unit & 0xFFU), static_cast<char>(unit >> 8U)};
  };
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = NextCharacter(text, at);
    if (character >= kMalformed) {
      put(0xFFFD);
    } else if (character < 0x10000) {
      put(character);
    } else {
      put(0xD800 + ((character - 0x10000) >> 10U));
      put(0xDC00 + ((character - 0x10000) & 0x3FFU));
    }
  }
  return bytes;
}

bool IsUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();)
    if (NextCharacter(bytes, at) >= kMalformed) return false;
  return true;
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) NextCharacter(text, at);
  return count;
}

char32_t FoldCase(char32_t character) {
  if (character < 0x80) return character >= 'A' && character <= 'Z' ? character + 32 : character;
  if (character >= kMalformed) return character;
  static const locale_t kUtf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kUtf8 == nullptr) return character;
  return static_cast<char32_t>(::towlower_l(static_cast<wint_t>(character), kUtf8));
}
