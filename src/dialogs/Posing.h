// SPDX-License-Identifier: MIT
// Messages and questions through the sized dialog.
#pragma once

#include <string>

namespace GlobalsKv {

/// Shows the pending message of gConflictType, if any, and leaves it pending.
void PoseConflictDialog();

/// Shows a message in the information form. No message is pending afterwards.
void KvPoseInfoDialog(const std::string& message);

/// One that deletes takes no answer at once: see Window::GuardAnswers.
enum class Question { Harmless, Deletes };

/// True for yes.
[[nodiscard]] bool YesNoDlg(const std::string& question, Question kind = Question::Harmless);

/// Drops the message window that is kept between uses, before the display goes.
void DropSharedMessage();

}  // namespace GlobalsKv

namespace ViewConst {

/// Asks a numbered message, or for 999 the text of gErrorString. True for yes. Neither this nor YesNoDlg is
/// the window YesNoDialog, which asks about an existing folder.
[[nodiscard]] bool YesNoDialog(int number, GlobalsKv::Question kind = GlobalsKv::Question::Harmless);

}  // namespace ViewConst
