// SPDX-License-Identifier: MIT
// Agreement, information and notes: long texts, plain or HTML, and the form in which a record stores them.
#pragma once

#include <string>

namespace pack {

struct Note {
  std::string text;  ///< UTF-8, lines end in LF; empty: no note
  bool html = false;
};

/// The note as a field of the record. Plain text in ASCII keeps its words, with "|" for line ends; anything
/// else takes the marked form, "$HTML$" and hexadecimal UTF-16LE. An HTML note without the tag "<HTML>", by
/// which the installer knows a page, is wrapped in it; a plain one that holds the tag is refused.
std::string NoteField(const std::string& field, const Note& note);

}  // namespace pack
