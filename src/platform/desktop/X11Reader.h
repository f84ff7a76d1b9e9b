// SPDX-License-Identifier: MIT
// Reads the clipboard of an X display without standing still until its owner has answered.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

enum class ClipboardAnswer {
  kText,      // empty where there is none, or none that can be had
  kSilence,   // the owner has stopped answering, or `wait` broke off
  kElsewhere  // no display
};

/// What an owner, which may be any program, can have of this one.
struct ClipboardBounds {
  std::chrono::milliseconds silence{2'000};  // without anything new
  std::chrono::milliseconds whole{30'000};   // also for one who goes on and on
  std::size_t bytes = 64U << 20;             // of the text as its owner sends it; a longer one counts as none
};

/// The text of the CLIPBOARD selection of $DISPLAY up to its first NUL, in UTF-8, as RepairUtf8 makes it of
/// malformed bytes; of an owner's answer that is no text, or too long, nothing. `wait` is called while there
/// is no answer, and now and then while there are many. It should take some milliseconds; where it returns
/// false reading ends.
ClipboardAnswer ReadX11Clipboard(std::string& text, const std::function<bool()>& wait,
                                 const ClipboardBounds& bounds = {});
