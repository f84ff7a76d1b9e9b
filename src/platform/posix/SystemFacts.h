// SPDX-License-Identifier: MIT
// What is known of the system and its processes; every system tells it another way.
#pragma once

#include <cstdint>
#include <string>

/// The running program's file, links resolved; empty where it isn't known.
std::string OwnExecutable();

/// Installed memory in bytes, with what the system keeps for itself; 0 where it isn't known.
std::uint64_t InstalledBytes();

/// The two numbers of the system's version; the second is 0 where there is but one. False without one.
bool ReadSystemVersion(long long& major, long long& minor);
/// The same from the text of an os-release file: VERSION_ID.
bool ParseSystemVersion(const std::string& release, long long& major, long long& minor);

/// Does a process run a program that lies below the folder `place`, a resolved path?
bool ProcessRunsBelow(const std::string& place);
/// Does one that this user may look at have a file open there?
bool ProcessHasOpenBelow(const std::string& place);

/// A descriptor, the caller's, that can be read from once the process has ended; -1 where there is none.
int OpenEndOf(int process);

/// Does the path lie on the file system of a CD or DVD?
bool LiesOnDisc(const std::string& path);

/// From now on the system writes no image of this process's memory.
void HideMemoryFromDumps();
