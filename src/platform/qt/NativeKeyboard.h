// SPDX-License-Identifier: MIT
// Where the keyboard's state comes from.
#pragma once

#include <QEvent>

/// Takes in what an event tells about keys. To be called for every event before anybody can drop it: a key
/// goes up also while the program waits and takes no input.
void FollowKeys(const QEvent& event);
