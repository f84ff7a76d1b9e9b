// SPDX-License-Identifier: MIT
// Searching, splitting and decoding of texts. Text is UTF-8; positions that callers see count
// characters from 1, and 0 means not found. Searches ignore case unless they say otherwise.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ViewConst {

/// Position of the first `needle` in `text`. An empty needle is not found.
std::size_t Pos(std::string_view needle, std::string_view text);

/// The same at or after `start`. With `binary`, `start` and the result count bytes, and case counts.
std::size_t PosAfter(std::string_view needle, std::string_view text, std::size_t start, bool binary);

/// Byte offset of the first `needle` at or behind the byte offset `start`, ignoring case, or npos. For
/// callers that cut the text where they found something.
std::size_t FindText(std::string_view text, std::string_view needle, std::size_t start);

/// Do the texts equal each other, ignoring case?
bool NonCaseMatch(std::string_view a, std::string_view b);

/// The pieces between separators, one after the other; one empty piece for an empty text.
class FieldReader {
 public:
  FieldReader(std::string_view text, std::string_view separator) : fRest(text), fSeparator(separator) {}
  std::optional<std::string_view> Next();

 private:
  std::string_view fRest;
  std::string_view fSeparator;
  bool fEnded = false;
};

/// The first `most` of them. A text of nothing but separators would take many times its room.
std::vector<std::string_view> SplitFields(std::string_view text, std::string_view separator,
                                          std::size_t most);

/// The n-th field from 1; empty behind the last.
std::string NthField(std::string_view text, std::string_view separator, std::size_t n);

/// Number of the first field that matches `value`; 0 when none does, and for an empty text.
std::size_t FindField(std::string_view text, std::string_view separator, std::string_view value);

/// The leading number of a text, blanks in front allowed; 0 without one.
double Val(std::string_view text);

/// Val without its fraction, held within the type's range.
std::int64_t IntegerVal(std::string_view text);

/// Replaces the character `ch1` in either case by `ch2`; the text ends at its first NUL.
std::string ReplaceCh1WithCh2(std::string_view text, char ch1, char ch2);

/// `count` times the first byte of `ch`; empty for a count of 0 or less.
std::string FillString(std::string_view ch, std::int64_t count);

/// Hexadecimal digits of little-endian UTF-16 as UTF-8; with `decode` false the text as it is.
std::string UnicodeFromHex(std::string_view text, bool decode);

/// Its inverse: four upper-case digits a unit, "A" is "4100". A malformed byte becomes U+FFFD.
std::string HexFromUnicode(std::string_view text);

/// Two upper-case digits a byte.
std::string HexFromBytes(std::string_view bytes);

/// The value of a hexadecimal digit, "0" to "9" and "A" to "F". Another character below "A" counts as its
/// code, and one above "F" as its code less 55.
constexpr std::uint8_t HexDigitValue(char digit) {
  const auto code = static_cast<std::uint8_t>(digit);
  const std::uint8_t below = code >= '0' && code <= '9' ? '0' : 0;
  return static_cast<std::uint8_t>(code - (code >= 'A' ? 55 : below));
}

/// `count` bytes from 2 * `count` digits, each cut to a byte.
void MemoryBlockHexToByte(const char* digits, std::uint8_t* bytes, std::size_t count);

/// A line end that LineEndingEncoding replaces. Nothing sets it, so that texts stay as they are.
extern std::string gCR;

/// Replaces the character `gCR` by a line feed.
std::string LineEndingEncoding(const std::string& text);

/// The address that a click on "example.com" leads to: with "http://" in front where no "http" is in it, and
/// without blanks around it. Empty for nothing.
std::string CompleteAddress(std::string_view text);

/// Is the note a page? True when "<HTML>" stands in it, in any case.
bool IsHtml(std::string_view note);

}  // namespace ViewConst
