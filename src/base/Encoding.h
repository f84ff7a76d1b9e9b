// SPDX-License-Identifier: MIT
// Text encodings that packages use. Inside the program all text is UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Each byte is one character of Mac Roman.
std::string MacRomanToUtf8(std::string_view bytes);

/// None if a character has no byte there, or `text` is malformed.
std::optional<std::string> Utf8ToMacRoman(std::string_view text);

/// Each byte is one character of Latin-1.
std::string Latin1ToUtf8(std::string_view bytes);

/// For readers of old: characters beyond Latin-1, and malformed bytes, become question marks.
std::string Utf8ToLatin1(std::string_view text);

/// Well-formed UTF-8 as it stands; a byte that is part of no well-formed sequence is taken as a
/// character of Mac Roman, so that a text saved in the older encoding still reads.
std::string RepairUtf8(std::string_view bytes);

/// Little-endian UTF-16. An unpaired surrogate becomes U+FFFD; a single byte at the end is dropped.
std::string Utf16LittleEndianToUtf8(std::string_view bytes);

/// A malformed byte becomes U+FFFD.
std::string Utf8ToUtf16LittleEndian(std::string_view text);

bool IsUtf8(std::string_view bytes);

/// Decodes the character at `at` and moves `at` behind it. A malformed byte counts as one character
/// of its own, above U+10FFFF, so that it equals only itself.
char32_t NextCharacter(std::string_view text, std::size_t& at);

void AppendUtf8(std::string& text, char32_t character);

/// Characters, not bytes.
std::size_t CharacterCount(std::string_view text);

/// The simple lower-case form of a character (UTF-8 locale of the C library).
char32_t FoldCase(char32_t character);
