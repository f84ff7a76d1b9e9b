// SPDX-License-Identifier: MIT
// Whether this user may start as many threads as an install takes.
#pragma once

/// Tries it with so many at once where a limit is near: setrlimit(2). A toolkit that can't have its threads
/// waits for them for ever.
bool ThreadsCanStart(unsigned count);
