// SPDX-License-Identifier: MIT
#include "util/Strings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/Blanks.h"
#include "base/Encoding.h"

namespace ViewConst {

namespace {

/// Length in bytes of the prefix of `text` that matches `needle` ignoring case, or npos.
std::size_t MatchLength(std::string_view text, std::string_view needle) {
  std::size_t at = 0;
  for (std::size_t wanted = 0; wanted < needle.size();) {
    if (at == text.size()) return std::string_view::npos;
    if (FoldCase(NextCharacter(text, at)) != FoldCase(NextCharacter(needle, wanted)))
      return std::string_view::npos;
  }
  return at;
}

/// Byte offset of the character with the given number from 1, or npos behind the end.
std::size_t OffsetOf(std::string_view text, std::size_t character) {
  std::size_t at = 0;
  for (; character > 1; --character) {
    if (at >= text.size()) return std::string_view::npos;
    NextCharacter(text, at);
  }
  return at;
}

}  // namespace

std::size_t FindText(std::string_view text, std::string_view needle, std::size_t start) {
  if (needle.empty()) return std::string_view::npos;
  std::size_t head = 0;
  const char32_t first = FoldCase(NextCharacter(needle, head));
  for (std::size_t at = start; at < text.size();) {
    const std::size_t here = at;
    if (FoldCase(NextCharacter(text, at)) != first) continue;
    if (MatchLength(text.substr(here), needle) != std::string_view::npos) return here;
  }
  return std::string_view::npos;
}

std::size_t Pos(std::string_view needle, std::string_view text) {
  return PosAfter(needle, text, 1, false);
}

std::size_t PosAfter(std::string_view needle, std::string_view text, std::size_t start, bool binary) {
  start = std::max<std::size_t>(start, 1);
  if (binary) {
    const std::size_t at = needle.empty() ? std::string_view::npos : text.find(needle, start - 1);
    return at == std::string_view::npos ? 0 : at + 1;
  }
  const std::size_t offset = OffsetOf(text, start);
  if (offset == std::string_view::npos) return 0;
  const std::size_t at = FindText(text, needle, offset);
  return at == std::string_view::npos ? 0 : CharacterCount(text.substr(0, at)) + 1;
}

bool NonCaseMatch(std::string_view a, std::string_view b) {
  return MatchLength(a, b) == a.size();
}

std::optional<std::string_view> FieldReader::Next() {
  if (fEnded) return std::nullopt;
  const std::size_t end = fRest.find(fSeparator);
  const std::string_view field = fRest.substr(0, end);
  fEnded = end == std::string_view::npos;
  if (!fEnded) fRest.remove_prefix(end + fSeparator.size());
  return field;
}

std::vector<std::string_view> SplitFields(std::string_view text, std::string_view separator,
                                          std::size_t most) {
  std::vector<std::string_view> fields;
  FieldReader reader(text, separator);
  while (fields.size() < most) {
    const std::optional<std::string_view> field = reader.Next();
    if (!field) break;
    fields.push_back(*field);
  }
  return fields;
}

std::string NthField(std::string_view text, std::string_view separator, std::size_t n) {
  FieldReader reader(text, separator);
  std::optional<std::string_view> field;
  for (; n > 0; --n) {
    field = reader.Next();
    if (!field) break;
  }
  return std::string(field.value_or(""));
}

std::size_t FindField(std::string_view text, std::string_view separator, std::string_view value) {
  if (text.empty()) return 0;
  FieldReader reader(text, separator);
  for (std::size_t n = 1; const std::optional<std::string_view> field = reader.Next(); ++n)
    if (NonCaseMatch(*field, value)) return n;
  return 0;
}

double Val(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && std::isfinite(value) ? value : 0;
}

std::int64_t IntegerVal(std::string_view text) {
  constexpr double kBeyond = 9223372036854775808.0;
  // Nearly all of them are a few plain digits.
  std::int64_t whole = 0;
  const auto plain = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (plain.ec == std::errc() && plain.ptr == text.data() + text.size()) return whole;
  const double value = Val(text);
  if (value >= kBeyond) return std::numeric_limits<std::int64_t>::max();
  if (value <= -kBeyond) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

std::string ReplaceCh1WithCh2(std::string_view text, char ch1, char ch2) {
  std::string result(text.substr(0, text.find('\0')));
  const char32_t wanted = FoldCase(static_cast<unsigned char>(ch1));
  for (char& byte : result)
    if (FoldCase(static_cast<unsigned char>(byte)) == wanted) byte = ch2;
  return result;
}

std::string FillString(std::string_view ch, std::int64_t count) {
  if (count <= 0 || ch.empty()) return "";
  return std::string(static_cast<std::size_t>(count), ch.front());
}

void MemoryBlockHexToByte(const char* digits, std::uint8_t* bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    bytes[i] =
        static_cast<std::uint8_t>(16 * HexDigitValue(digits[2 * i]) + HexDigitValue(digits[2 * i + 1]));
}

std::string UnicodeFromHex(std::string_view text, bool decode) {
  if (!decode || text.empty()) return std::string(text);
  std::string units(text.size() / 2, '\0');
  MemoryBlockHexToByte(text.data(), reinterpret_cast<std::uint8_t*>(units.data()), units.size());
  return Utf16LittleEndianToUtf8(units);
}

std::string HexFromBytes(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string digits;
  digits.reserve(2 * bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    digits += {kDigits[value >> 4U], kDigits[value & 15U]};
  }
  return digits;
}

std::string HexFromUnicode(std::string_view text) {
  return HexFromBytes(Utf8ToUtf16LittleEndian(text));
}

std::string gCR;

std::string LineEndingEncoding(const std::string& text) {
  return gCR.empty() ? text : ReplaceCh1WithCh2(text, gCR.front(), '\n');
}

std::string CompleteAddress(std::string_view text) {
  std::string address = WithoutBlanksAround(text);
  return address.empty() || Pos("http", address) > 0 ? address : "http://" + address;
}

bool IsHtml(std::string_view note) {
  return Pos("<HTML>", note) > 0;
}

}  // namespace ViewConst
