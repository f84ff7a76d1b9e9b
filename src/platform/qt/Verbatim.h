// SPDX-License-Identifier: MIT
// Texts as the toolkit shows them just as they are.
#pragma once

#include <QString>
#include <string>

#include "platform/qt/FittedText.h"

/// A button's caption, on one line: a line end in it is a blank.
inline QString CaptionLine(const std::string& caption) {
  return OneParagraph(QString::fromStdString(caption), Wrap::OneLine);
}

/// For the text of a button: an "&" is a character like any other, and marks no mnemonic.
inline QString WithoutMnemonic(QString caption) {
  return caption.replace('&', "&&");
}

/// For a window's title: "[*]" is the toolkit's own sign for a changed document unless it stands twice, and
/// in place of an empty title it would show the program's name.
inline QString VerbatimTitle(const std::string& title) {
  return title.empty() ? QString(' ') : QString::fromStdString(title).replace("[*]", "[*][*]");
}
