// SPDX-License-Identifier: MIT
// Where things are on this machine.
#pragma once

#include <cstdint>
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

/// Bytes of the memory blocks that are online, by /sys/devices/system/memory; 0 where it doesn't tell.
std::uint64_t OnlineMemory();

/// The two numbers at the start of VERSION_ID in os-release(5); a single number has minor 0.
bool ReadSystemVersion(long long& major, long long& minor);

/// VERSION_ID of the text of an os-release file; false without one that begins with a number.
bool ParseSystemVersion(const std::string& release, long long& major, long long& minor);

/// The value of XDG_DESKTOP_DIR in the text of a user-dirs.dirs file with "$HOME" replaced, or empty.
std::string ParseDesktopFolder(const std::string& userDirs, const std::string& home);
