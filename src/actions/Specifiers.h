// SPDX-License-Identifier: MIT
// Path specifiers: a prefix of a program's name that says from which folder the rest counts.
#pragma once

#include <optional>
#include <string>

struct SpecifierFolders {
  std::string home;    // without closing "/"
  std::string target;  // without closing "/"
  std::string setup;   // of the installer bundle, with closing "/"
};

struct ResolvedSpecifier {
  std::string path;
  /// What the program that is about to run finds on the clipboard: the installer's folder and the rest.
  std::string clipboard;
};

/// None for a name without a prefix. Prefixes are tried in a row, each on what the one before left.
std::optional<ResolvedSpecifier> ResolveSpecifier(const std::string& name, const SpecifierFolders& folders);
