// SPDX-License-Identifier: MIT
// Files of lines NAME=value, as a shell would read them.
#pragma once

#include <string>

/// The whole file; empty where it can't be read.
std::string FileText(const std::string& path);
/// The last value of `name` in such a text, without quotes; empty where there is none.
std::string Setting(const std::string& text, const std::string& name);
