// SPDX-License-Identifier: MIT
// Where things are on this machine.
#pragma once

#include <string>

/// $HOME, else the user database's entry.
std::string UserHomeFolder();

/// The desktop folder that the user's directories file names, else "Desktop" in the home folder.
std::string UserDesktopFolder();

/// "tessarine-UID" below $TMPDIR or /tmp: mode 0700, this user's, no link. When somebody else holds
/// that name, a fresh folder of a random name, which is also that of a `program` (a path) that runs from it.
/// Empty when none can be made.
std::string PrivateTemporaryFolder(const std::string& program);

/// "/" when /Applications is a folder, else the home folder.
std::string ApplicationsParent();

/// The value of XDG_DESKTOP_DIR in the text of a user-dirs.dirs file with "$HOME" replaced, or empty.
std::string ParseDesktopFolder(const std::string& userDirs, const std::string& home);
