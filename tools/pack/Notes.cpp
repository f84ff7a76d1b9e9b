// SPDX-License-Identifier: MIT
#include "pack/Notes.h"

#include "pack/Refusal.h"
#include "util/Strings.h"

namespace pack {

std::string NoteText(const std::string& field, const Note& note) {
  const bool page = ViewConst::IsHtml(note.text);
  if (note.text.empty() || page == note.html) return note.text;
  if (page) throw Refusal(field, "is plain text that holds <HTML>, so that it would be shown as a page");
  return "<HTML>\n" + note.text + "\n</HTML>";
}

}  // namespace pack
