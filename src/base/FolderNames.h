// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The names in the open folder, without "." and "..", in the file system's order. None where it can't be
/// read to its end.
std::optional<std::vector<std::string>> NamesIn(int folder);
