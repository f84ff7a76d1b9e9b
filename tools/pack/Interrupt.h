// SPDX-License-Identifier: MIT
// The user's wish to stop, heard wherever a run takes long.
#pragma once

namespace pack {

/// Goes up to main through everything that has to be put away on the way.
struct Interrupted {
  int signal = 0;
};

/// From now on SIGINT, SIGTERM and SIGHUP are noted instead of ending the process.
void NoteSignals();
/// Throws Interrupted once one has come.
void CheckInterrupted();

}  // namespace pack
