// SPDX-License-Identifier: MIT
// Names for what is on its way to its place, or from it.
#pragma once

#include <string>

/// Sixteen hexadecimal digits that other users can't guess.
std::string RandomName();

/// A path beside `path` that nothing stands at: hidden, and not to be guessed by other users.
std::string SiblingName(const std::string& path);
