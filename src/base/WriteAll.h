// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// Writes all `count` bytes to the open file, in as many calls as it takes: write(2). False, with errno, when
/// one of them fails; what was written before stays.
[[nodiscard]] bool WriteAll(int file, const void* bytes, std::size_t count);
/// The same at a place: pwrite(2). Several threads may write to one file.
[[nodiscard]] bool WriteAllAt(int file, const void* bytes, std::size_t count, std::uint64_t offset);
