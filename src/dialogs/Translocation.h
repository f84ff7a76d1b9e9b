// SPDX-License-Identifier: MIT
// The way back for a program that the system has moved for the user's safety.
#pragma once

/// Asks for the program's own path and an administrator's password, has the system's mark taken off that
/// program if the user likes, and ends this run: the mark counts when the program is started.
void PoseTranslocation();
