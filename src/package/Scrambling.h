// SPDX-License-Identifier: MIT
// The light positional scrambling of package files: every second byte, from the second, is raised by
// one, modulo 256. It has no key and keeps the length.
#pragma once

#include <string>

/// Unscrambles in place. The bytes that result are text in Mac Roman.
void DecryptStr(std::string& text);

/// The scrambled bytes of `text`; the inverse of DecryptStr.
std::string Encrypt(const std::string& text);

/// Scrambles or unscrambles a whole file in memory independent of its size. A new file of its mode takes its
/// place once it is written; where that can't be, the file stays as it was. Nothing is reported; a missing
/// file is left missing.
void EncryptDecryptFileEnd(const std::string& path, bool encrypt);
