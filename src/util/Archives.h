// SPDX-License-Identifier: MIT
// Expansion by the command-line tool.
#pragma once

#include <string>

namespace ViewConst {

/// Expands a zip file into a folder, made if missing, and waits for it. With `replace`, a folder that
/// is there is deleted first; without, its other files stay. True when the tool's exit code is 0.
bool ZipFileToFolder(const std::string& zipPath, const std::string& folderPath, bool replace);

}  // namespace ViewConst
