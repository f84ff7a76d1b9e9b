// SPDX-License-Identifier: MIT
// What the machine has for the crew.
#pragma once

#include <cstdint>

namespace archive {

/// The processors that this process may use, at least one.
unsigned Processors();

/// Bytes of memory that can be had without pushing others to the disk, by the system's and the control
/// group's count; all there could be where neither tells. To be asked before the process shuts itself in.
std::uint64_t FreeMemory();

}  // namespace archive
