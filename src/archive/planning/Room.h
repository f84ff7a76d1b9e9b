// SPDX-License-Identifier: MIT
// The free space of a file system.
#pragma once

#include <cstdint>

#include "archive/Result.h"

namespace archive {

/// Whether the file system of the open folder takes so many more bytes, and items if it counts them. The
/// user's part of the free space counts, not what is kept for the system (fstatvfs).
Status CheckRoom(int folder, std::uint64_t bytes, std::uint64_t items);

}  // namespace archive
