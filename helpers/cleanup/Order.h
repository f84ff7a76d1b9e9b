// SPDX-License-Identifier: MIT
// The one line that tells the cleanup program what to remove.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The path of "DeleteFile=PATH" or "DeleteFolder=PATH". Empty for any other text, and for a path that
/// isn't absolute or has an empty, "." or ".." element.
std::string PathOfOrder(std::string_view order);

/// Empty when the item may go. Otherwise why not: it is the root or a folder of the system's, it is one of
/// `kept` or holds one, it is a mount point, or it is missing.
std::string Objection(const std::string& path, const std::vector<std::string>& kept);

/// What no installer may take along, whatever it came in: the home folders of this machine's users, and
/// this user's temporary folder, applications and folders for documents.
std::vector<std::string> KeptFolders();
