// SPDX-License-Identifier: MIT
// The two stored forms of a note.
#include "pack/Notes.h"

#include <algorithm>

#include "pack/Refusal.h"
#include "pack/Text.h"

namespace pack {
namespace {

constexpr char kMark[] = "$HTML$";
constexpr char kPageTag[] = "<HTML>";

// A plain field is UTF-8 in the file and Mac Roman to its reader: only ASCII is the same in both. A "|" of
// the text itself would come back as a line end, and a "#" next to a line end could complete the record's
// separator "|#|".
bool FitsPlainForm(const std::string& text) {
  const bool ascii =
      std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  return ascii && text.find('|') == std::string::npos && text.find("\n#") == std::string::npos &&
         text.find("#\n") == std::string::npos && text.back() != '#' && !ContainsIgnoringCase(text, kMark);
}

}  // namespace

std::string NoteField(const std::string& field, const Note& note) {
  if (note.text.empty()) return "";
  const bool page = ContainsIgnoringCase(note.text, kPageTag);
  if (note.html) {
    const std::string text = page ? note.text : "<HTML>\n" + note.text + "\n</HTML>";
    return kMark + ToHexUtf16(text);
  }
  if (page) throw Refusal(field, "is plain text that holds <HTML>, so that it would be shown as a page");
  if (!FitsPlainForm(note.text)) return kMark + ToHexUtf16(note.text);
  std::string stored = note.text;
  std::replace(stored.begin(), stored.end(), '\n', '|');
  return stored;
}

}  // namespace pack
