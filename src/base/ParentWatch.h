// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

/// Has SIGTERM come to this process when its parent ends. False if `parent` is not its parent any more: it
/// has ended, and nobody waits for this process.
[[nodiscard]] bool EndWithParent(pid_t parent);
