// SPDX-License-Identifier: MIT
// How long an expansion should take that nobody can watch.
#pragma once

#include <cstdint>

/// In ticks (1/60 s), never less than 30. `size` is the archive's length in bytes; `slowSystem`
/// doubles the estimate before the reductions for large files.
std::int64_t EstimateTicks(std::uint64_t size, bool slowSystem);
