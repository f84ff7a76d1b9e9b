// SPDX-License-Identifier: MIT
// Waiting that keeps the windows alive.
#pragma once

namespace ViewConst {

/// Waits `seconds` on the machine's clock.
void Sleep(double seconds);

/// How long a loop goes on that waits for an item to vanish, in seconds.
inline constexpr int kVanishLimit = 30;

}  // namespace ViewConst
