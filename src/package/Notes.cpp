// SPDX-License-Identifier: MIT
#include "package/Notes.h"

#include <algorithm>

#include "util/Strings.h"

namespace {

constexpr std::string_view kMark = "$HTML$";

/// Of a text that isn't ASCII readers don't agree on the encoding. A "|" would come back as a line end, and a
/// "#" next to one could complete the separator "|#|".
bool FitsPlainForm(std::string_view note) {
  const auto holds = [note](std::string_view text) { return note.find(text) != std::string_view::npos; };
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  return std::all_of(note.begin(), note.end(), isAscii) && !holds("|") && !holds("\n#") && !holds("#\n") &&
         !note.ends_with('#') && ViewConst::Pos(kMark, note) == 0;
}

}  // namespace

std::string DecodeNote(std::string_view field) {
  const bool marked = ViewConst::Pos(kMark, field) > 0;
  if (marked) field.remove_prefix(kMark.size());
  const std::string lines = ViewConst::ReplaceCh1WithCh2(field, '|', '\n');
  return ViewConst::UnicodeFromHex(lines, marked);
}

std::string EncodeNote(std::string_view note) {
  if (note.empty()) return "";
  if (!ViewConst::IsHtml(note) && FitsPlainForm(note)) return ViewConst::ReplaceCh1WithCh2(note, '\n', '|');
  return std::string(kMark) + ViewConst::HexFromUnicode(note);
}
