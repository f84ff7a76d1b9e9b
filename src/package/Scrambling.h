// SPDX-License-Identifier: MIT
// The light positional scrambling of package files: every second byte, from the second, is raised by
// one, modulo 256. It has no key and keeps the length.
#pragma once

#include <string>

/// Unscrambles in place. The bytes that result are text in Mac Roman.
void DecryptStr(std::string& text);

/// The scrambled bytes of `text`; the inverse of DecryptStr.
std::string Encrypt(const std::string& text);

/// Scrambles or unscrambles a whole file in memory independent of its size. It is done in place, so that
/// it needs no further room on the disk; a file with several names, or named by a link, is replaced by a
/// new one instead, and keeps its bytes when that can't be written. Nothing is reported; a missing file
/// is left missing.
void EncryptDecryptFileEnd(const std::string& path, bool encrypt);
