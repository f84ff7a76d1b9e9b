// SPDX-License-Identifier: MIT
// The one line that tells the cleanup program what to remove.
#pragma once

#include <string>
#include <string_view>

/// The path of "DeleteFile=PATH" or "DeleteFolder=PATH". Empty for any other text, and for a path that
/// isn't absolute or has an empty, "." or ".." element.
std::string PathOfOrder(std::string_view order);
