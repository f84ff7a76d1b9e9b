// SPDX-License-Identifier: MIT
// Scrambling of texts and of whole files.
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
