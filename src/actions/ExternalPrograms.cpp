// SPDX-License-Identifier: MIT
// The publisher's programs before and after the install.
#include "actions/ExternalPrograms.h"

#include "actions/Specifiers.h"
#include "package/SplitSet.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"
#include "util/Strings.h"

namespace {

constexpr std::int64_t kFirstWait = 180;  // ticks
constexpr std::int64_t kPollInterval = 60;

void WaitBeyond(std::int64_t ticks) {
  Machine& machine = Machine::Current();
  const std::int64_t start = machine.Ticks();
  while (machine.Ticks() <= start + ticks && !machine.Ending()) machine.DoEvents(10);
}

}  // namespace

ProgramAnswer ReadAnswer(const std::string& clipboard) {
  using Kind = ProgramAnswer::Kind;
  constexpr std::string_view kAbort = "TessarineAbort:";
  constexpr std::string_view kDone = "TessarineDone:";
  if (ViewConst::NonCaseMatch(clipboard, "TessarineWait")) return {Kind::Wait};
  if (ViewConst::Pos(kAbort, clipboard) == 1) return {Kind::Abort, clipboard.substr(kAbort.size())};
  if (ViewConst::Pos(kDone, clipboard) == 1) return {Kind::Done, clipboard.substr(kDone.size())};
  return {};
}

bool TessarineStubWindow::SpecialPath(std::string& path) {
  const std::optional<ResolvedSpecifier> resolved =
      ResolveSpecifier(path, {Machine::Current().HomeFolder(), fTargetFolder, StartedFrom()});
  if (!resolved) return false;
  Machine::Current().SetClipboardText(resolved->clipboard);
  fStale = resolved->clipboard;
  path = resolved->path;
  return true;
}

bool TessarineStubWindow::DoExecuteBefore() {
  if (fExecuteBeforeName.empty()) return true;
  Machine::Current().SetClipboardText("");
  Machine::Current().ForgetLaunched();
  fStale.clear();
  Hide();
  std::optional<FolderItem> program;
  if (SpecialPath(fExecuteBeforeName)) {
    if (ViewConst::FileExists(fExecuteBeforeName)) program = GlobalsKv::MyGetFolderItem(fExecuteBeforeName);
  } else {
    const FolderItem child = ViewConst::ResourceFolder().Child(fExecuteBeforeName);
    if (child.Exists()) program = child;
  }
  return !program || !program->Launch(true) || CommunicateWithExecutable();
}

bool TessarineStubWindow::CommunicateWithExecutable() {
  Machine& machine = Machine::Current();
  // What stood there before the launch is another program's word.
  const auto answerOf = [this](const std::string& text) {
    return text == fStale ? ProgramAnswer{} : ReadAnswer(text);
  };
  WaitBeyond(kFirstWait);
  std::string text = machine.ClipboardText();
  if (!text.empty()) {
    // A program that has ended can't take back that it wants to be waited for.
    bool runs = true;
    do {
      runs = machine.LaunchedRuns();
      WaitBeyond(kPollInterval);
      text = machine.ClipboardText();
    } while (answerOf(text).kind == ProgramAnswer::Kind::Wait && runs && !machine.Ending());
  }
  if (machine.Ending()) return false;
  const ProgramAnswer answer = answerOf(text);
  if (!answer.message.empty()) MessageBox(answer.message);
  if (answer.kind == ProgramAnswer::Kind::Abort) return false;
  if (fDressed) Show();
  MyProcessToTop();
  return true;
}
