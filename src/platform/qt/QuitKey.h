// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;

/// Quits the program where the event is the key for it, as the menu does in windows that have one.
bool QuitsBy(const QKeyEvent& event);
