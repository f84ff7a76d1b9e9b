// SPDX-License-Identifier: MIT
// The workers of an expansion as threads, and the watch over them.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "archive/writing/Worker.h"

namespace archive {

/// As many workers as `memory` bytes are enough for, of those there could be. What a solid archive takes
/// grows with them; any other is read in a bounded room that they share.
unsigned CrewFor(const Plan& plan, unsigned workers, std::uint64_t memory);

/// Runs the workers to the end of the jobs, each shut in to the folder that it writes to if `wall`. Meanwhile
/// tells how many bytes are written, and stops them when `stop` is set.
Status RunCrew(Work& work, unsigned workers, bool wall, const std::atomic<bool>* stop,
               const std::function<void(std::uint64_t)>& tell);

}  // namespace archive
