// SPDX-License-Identifier: MIT
// What a package may require of the machine, by keyword. A keyword in no table requires nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The message for a system that is too old for `keyword`, such as "MacOS10.12"; empty when it will do.
/// 0 for a number that the system doesn't give.
std::string VersionComplaint(const std::string& keyword, std::int64_t major, std::int64_t minor);

/// The message for a machine with less memory than `keyword`, such as "2GB", asks for; empty when there
/// is enough. `megabytes` counts units of 1,000,000 bytes.
std::string MemoryComplaint(const std::string& keyword, std::int64_t megabytes);

/// All keywords that require something, from the least to the most.
std::vector<std::string> VersionKeywords();
std::vector<std::string> MemoryKeywords();
