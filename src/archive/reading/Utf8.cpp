// SPDX-License-Identifier: MIT
// Checks and conversions of names.
#include "archive/reading/Utf8.h"

#include "base/Encoding.h"

namespace archive {
namespace {

constexpr char16_t kCodePage437[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
static_assert(sizeof kCodePage437 / sizeof kCodePage437[0] == 128 + 1);

unsigned Byte(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
  constexpr char32_t kLast = 0x10FFFF;
  std::size_t length = 0;
  return NextCharacter(text, length) <= kLast ? length : 0;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

bool IsAscii(std::string_view text) {
  // Without an early end the compiler takes many characters at once.
  unsigned char all = 0;
  for (const char c : text) all |= static_cast<unsigned char>(c);
  return all < 0x80;
}

bool HoldsControl(std::string_view text) {
  bool suspicious = false;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    suspicious |= byte < 0x20 || byte == 0x7F || byte == 0xC2;
  }
  for (; suspicious && !text.empty(); text.remove_prefix(1))
    if (IsControl(text)) return true;
  return false;
}

bool IsControl(std::string_view text) {
  const unsigned first = Byte(text, 0);
  return first < 0x20 || first == 0x7F || (first == 0xC2 && Byte(text, 1) < 0xA0);
}

std::string FromCodePage437(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned byte = Byte(bytes, i);
    AppendUtf8(text, byte < 0x80 ? byte : kCodePage437[byte - 0x80]);
  }
  return text;
}

}  // namespace archive
