// SPDX-License-Identifier: MIT
// Addresses that the installer opens or loads from.
#pragma once

#include <string>

namespace pack {

/// "http://" or "https://" with a host, as the installer takes it.
bool IsWebAddress(const std::string& text);

/// "mailto:" with something behind it.
bool IsMailAddress(const std::string& text);

}  // namespace pack
