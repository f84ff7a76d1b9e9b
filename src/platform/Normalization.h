// SPDX-License-Identifier: MIT
// One form for letters that can be written in several ways.
#pragma once

#include <string>

/// UTF-8 in which each letter with its accents is one character where there is one (normalization form C).
std::string ComposedForm(const std::string& text);
