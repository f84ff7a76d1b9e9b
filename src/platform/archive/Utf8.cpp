// SPDX-License-Identifier: MIT
// Checks and conversions of names.
#include "platform/archive/Utf8.h"

#include <algorithm>

namespace archive {
namespace {

constexpr char16_t kCodePage437[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
static_assert(sizeof kCodePage437 / sizeof kCodePage437[0] == 128 + 1);

unsigned Byte(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

bool Continues(std::string_view text, std::size_t from, std::size_t length) {
  if (text.size() < length) return false;
  for (std::size_t i = from; i < length; ++i)
    if ((Byte(text, i) & 0xC0) != 0x80) return false;
  return true;
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
  const unsigned first = Byte(text, 0);
  if (first < 0x80) return 1;
  const unsigned second = text.size() > 1 ? Byte(text, 1) : 0;
  if (first >= 0xC2 && first <= 0xDF) return Continues(text, 1, 2) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool overlong = first == 0xE0 && second < 0xA0;
    const bool surrogate = first == 0xED && second > 0x9F;
    return !overlong && !surrogate && Continues(text, 1, 3) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool overlong = first == 0xF0 && second < 0x90;
    const bool beyond = first == 0xF4 && second > 0x8F;
    return !overlong && !beyond && Continues(text, 1, 4) ? 4 : 0;
  }
  return 0;
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

void AppendUtf8(std::string& to, char32_t character) {
  const auto put = [&to](char32_t byte) { to += static_cast<char>(byte); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
  } else {
    if (character < 0x10000) {
      put(0xE0 | (character >> 12));
    } else {
      put(0xF0 | (character >> 18));
      put(0x80 | (character >> 12 & 0x3F));
    }
    put(0x80 | (character >> 6 & 0x3F));
  }
  put(0x80 | (character & 0x3F));
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
