// SPDX-License-Identifier: MIT
// The one line that tells the cleanup program what to remove.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The path of "DeleteFile=PATH" or "DeleteFolder=PATH". Empty for any other text, and for a path that
/// isn't absolute or has an empty, "." or ".." element.
std::string PathOfOrder(std::string_view order);

/// Empty when the item may go. Otherwise why not: it is the root, one of `homes` or above one, or a
/// mounted file system.
std::string Objection(const std::string& path, const std::vector<std::string>& homes);

/// The home folders of this machine's users, and $HOME.
std::vector<std::string> HomeFolders();
