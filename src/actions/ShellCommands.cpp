// SPDX-License-Identifier: MIT
// The script's shell commands: one line, or the lines of a file that has been installed.
#include "actions/ShellCommands.h"

#include "platform/Machine.h"
#include "platform/Shell.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/Strings.h"

std::vector<std::string> ScriptLines(std::string_view text) {
  const auto holds = [text](std::string_view separator) {
    return text.find(separator) != std::string_view::npos;
  };
  const std::string_view separator = holds("\r\n") ? "\r\n" : holds("\n") ? "\n" : "\r";
  std::vector<std::string> lines;
  ViewConst::FieldReader fields(text, separator);
  while (const std::optional<std::string_view> line = fields.Next()) lines.emplace_back(*line);
  return lines;
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
