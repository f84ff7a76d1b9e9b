// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Writes all `count` bytes to the open file, in as many calls as it takes: write(2). False, with errno, when
/// one of them fails; what was written before stays.
[[nodiscard]] bool WriteAll(int file, const void* bytes, std::size_t count);
