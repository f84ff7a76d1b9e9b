// SPDX-License-Identifier: MIT
// The publisher's programs before and after the install, and the script's shell commands.
#include "actions/ExternalPrograms.h"

#include "actions/Specifiers.h"
#include "package/SplitSet.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/Shell.h"
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

std::vector<std::string> ScriptLines(std::string_view text) {
  const auto holds = [text](std::string_view separator) {
    return text.find(separator) != std::string_view::npos;
  };
  const std::string_view separator = holds("\r\n") ? "\r\n" : holds("\n") ? "\n" : "\r";
  std::vector<std::string> lines;
  for (const std::string_view line : ViewConst::SplitFields(text, separator)) lines.emplace_back(line);
  return lines;
}

bool TessarineStubWindow::SpecialPath(std::string& path) {
  const std::optional<ResolvedSpecifier> resolved =
      ResolveSpecifier(path, {Machine::Current().HomeFolder(), fTargetFolder, StartedFrom()});
  if (!resolved) return false;
  Machine::Current().SetClipboardText(resolved->clipboard);
  path = resolved->path;
  return true;
}

bool TessarineStubWindow::DoExecuteBefore() {
  if (fExecuteBeforeName.empty()) return true;
  Machine::Current().SetClipboardText("");
  Hide();
  std::optional<FolderItem> program;
  if (SpecialPath(fExecuteBeforeName)) {
    if (ViewConst::FileExists(fExecuteBeforeName)) program = GlobalsKv::MyGetFolderItem(fExecuteBeforeName);
  } else {
    const FolderItem child = ViewConst::ResourceFolder().Child(fExecuteBeforeName);
    if (child.Exists()) program = child;
  }
  if (!program) return true;
  program->Launch(true);
  return CommunicateWithExecutable();
}

bool TessarineStubWindow::CommunicateWithExecutable() {
  WaitBeyond(kFirstWait);
  std::string text = Machine::Current().ClipboardText();
  if (!text.empty()) {
    do {
      WaitBeyond(kPollInterval);
      text = Machine::Current().ClipboardText();
    } while (ReadAnswer(text).kind == ProgramAnswer::Kind::Wait && !Machine::Current().Ending());
  }
  if (Machine::Current().Ending()) return false;
  const ProgramAnswer answer = ReadAnswer(text);
  if (!answer.message.empty()) MessageBox(answer.message);
  if (answer.kind == ProgramAnswer::Kind::Abort) return false;
  if (fDressed) Show();
  MyProcessToTop();
  return true;
}

void TessarineStubWindow::DoShellCmd(const std::string& command) {
  Shell().Execute(command);
}

void TessarineStubWindow::DoShellFile(const std::string& name) {
  std::string text;
  ViewConst::DataFileRead(fTargetFolder + "/" + name, text);
  Shell shell;
  for (const std::string& line : ScriptLines(text)) {
    if (Machine::Current().Ending()) return;
    shell.Execute(line);
    Machine::Current().Yield();
  }
}
