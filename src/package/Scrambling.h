// SPDX-License-Identifier: MIT
// The light positional scrambling of package files: every second byte, from the second, is raised by
// one, modulo 256. It has no key and keeps the length.
#pragma once

#include <string>

/// Unscrambles in place. The bytes that result are text in Mac Roman.
void DecryptStr(std::string& text);

/// The scrambled bytes of `text`; the inverse of DecryptStr.
std::string Encrypt(const std::string& text);

/// Replaces the file by its scrambled or unscrambled form, in memory independent of its size. The new
/// file takes the old one's place, without its attributes, once it is complete; when it can't be
/// written, the old one stays as it is. Nothing is reported; a missing file is left missing.
void EncryptDecryptFileEnd(const std::string& path, bool encrypt);
