// SPDX-License-Identifier: MIT
// Reads the clipboard of an X display without waiting for its owner in one piece.
#pragma once

#include <functional>
#include <string>

enum class ClipboardAnswer {
  kText,      // also when there is none: the text is empty then
  kSilence,   // the owner of the selection didn't answer within two seconds
  kElsewhere  // no display, or a text so long that it comes in pieces
};

/// The text of the CLIPBOARD selection of $DISPLAY, in UTF-8. `wait` is called while there is no answer
/// and should take some milliseconds.
ClipboardAnswer ReadX11Clipboard(std::string& text, const std::function<void()>& wait);
