// SPDX-License-Identifier: MIT
// The way that every note of a package is shown: as a page or as plain text, by what it holds.
#pragma once

#include <string>

struct Note {
  std::string text;
  std::string title;
  std::string quitCaption{};  // replaces the dialog's own unless empty
  std::string htmlCaption{};  // of the button that goes on, when the text is a page
  std::string plainCaption{};
  bool lowered = false;  // a plain text's dialog is 200 points lower than designed
  bool canDecline = true;
};

/// Shows the note modally. True when the user went on.
[[nodiscard]] bool AskByNote(const Note& note);

/// Fewer than 500 characters, for which the lowered dialog is made.
bool IsShortNote(const std::string& text);
