// SPDX-License-Identifier: MIT
// What the script clears away or saves before anything is expanded. Silent, whatever happens.
#include "actions/ActionScript.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"

using ViewConst::DirectoryExists;
using ViewConst::FileExists;

namespace {

/// Never overwrites: what was saved by an earlier run stays.
void Save(const std::string& source, const std::string& destination) {
  if (DirectoryExists(destination) || FileExists(destination)) return;
  if (DirectoryExists(source))
    static_cast<void>(ViewConst::CopyFolder(source, destination));
  else if (FileExists(source))
    static_cast<void>(ViewConst::CopyFile(source, destination));
}

}  // namespace

void TessarineStubWindow::PreInstallCopy() {
  ActionScript script(fPostCopy);
  while (const std::optional<Action> action = script.Next()) {
    if (Machine::Current().Ending()) return;
    if (action->kind == Action::Kind::PreInstallDelete) ViewConst::DeleteItem(action->value);
    if (action->kind == Action::Kind::PreInstallCopy) Save(action->source, action->destination);
    Machine::Current().Yield();
  }
}
