// SPDX-License-Identifier: MIT
// Agreement, information and notes: long texts, plain or HTML.
#pragma once

#include <string>

namespace pack {

struct Note {
  std::string text;  ///< UTF-8, lines end in LF; empty: no note
  bool html = false;
};

/// The note as the installer tells pages from texts: a page without the tag "<HTML>" is wrapped in it, and a
/// plain text that holds the tag is refused.
std::string NoteText(const std::string& field, const Note& note);

}  // namespace pack
