// SPDX-License-Identifier: MIT
// Where the keyboard's state comes from.
#pragma once

#include <QEvent>
#include <QKeyEvent>

/// Takes in what an event tells about keys. To be called for every event before anybody can drop it: a key
/// goes up also while the program waits and takes no input.
void FollowKeys(const QEvent& event);

/// Quits the program where the event is the key for it, as the menu does in windows that have one.
bool QuitsBy(const QKeyEvent& event);
