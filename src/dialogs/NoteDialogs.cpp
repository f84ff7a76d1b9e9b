// SPDX-License-Identifier: MIT
#include "dialogs/NoteDialogs.h"

#include "base/Encoding.h"
#include "dialogs/LicenseAgreementWindow.h"
#include "dialogs/THtmlNoteDlg.h"
#include "util/Strings.h"

namespace {

constexpr std::size_t kShortNote = 500;
constexpr int kLoweredBy = 200;

void Dress(Window& dialog, PushButton& quit, PushButton& goOn, const Note& note, const std::string& caption) {
  dialog.SetTitle(note.title);
  if (!note.quitCaption.empty()) quit.SetCaption(note.quitCaption);
  quit.SetVisible(note.canDecline);
  goOn.SetCaption(caption);
}

}  // namespace

bool IsShortNote(const std::string& text) {
  return CharacterCount(text) < kShortNote;
}

bool AskByNote(const Note& note) {
  if (ViewConst::IsHtml(note.text)) {
    THtmlNoteDlg dialog;
    Dress(dialog, dialog.QuitBtn, dialog.ContinueBtn, note, note.htmlCaption);
    dialog.MyHTMLViewer.LoadPage(note.text);
    dialog.ShowModal();
    return dialog.fBtnName == dialog.ContinueBtn.Name();
  }
  LicenseAgreementWindow dialog;
  Dress(dialog, dialog.QuitBtn, dialog.OKBtn, note, note.plainCaption);
  dialog.AgreementEdit.SetText(note.text);
  if (note.lowered) dialog.LowerBy(kLoweredBy);
  dialog.ShowModal();
  return dialog.fBtnName == dialog.OKBtn.Name();
}
