// SPDX-License-Identifier: MIT
// Owns the clipboard of an X display for as long as nobody else wants it.
#pragma once

#include <chrono>
#include <functional>
#include <string>

/// Holds `text`, UTF-8 of any length, on the CLIPBOARD selection of $DISPLAY until somebody else takes it or
/// the display goes, and hands it to every program that asks. `held` is called once it's there. False when it
/// never was. A program that takes a text in pieces and stops for `patience` is dropped.
bool KeepX11Clipboard(std::string text, const std::function<void()>& held,
                      std::chrono::milliseconds patience = std::chrono::seconds(5));
