// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Where the link leads, as it says; empty where there is none. Also of the links in /proc, which don't tell
/// their length: readlink(2).
std::string LinkText(const std::string& link);
