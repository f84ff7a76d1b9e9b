// SPDX-License-Identifier: MIT
// The pointer of the mouse while the program is at work.
#pragma once

/// While it lives, the pointer is the desktop's wait cursor over all windows of the program.
class WaitCursor {
 public:
  WaitCursor();
  ~WaitCursor();
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};
