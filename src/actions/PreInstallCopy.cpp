// SPDX-License-Identifier: MIT
// What the script clears away or saves before anything is expanded. Silent, whatever happens.
#include "actions/ActionScript.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Brake.h"
#include "util/Files.h"

using ViewConst::DirectoryExists;
using ViewConst::FileExists;

namespace {

/// Never overwrites: what was saved by an earlier run stays. What can't be saved is not deleted in this run,
/// and half a copy doesn't stand in the way of the next one.
void Save(const std::string& source, const std::string& destination) {
  if (DirectoryExists(destination) || FileExists(destination) || !FileExists(source)) return;
  const bool saved = DirectoryExists(source) ? ViewConst::CopyFolder(source, destination)
                                             : ViewConst::CopyFile(source, destination);
  // An entry that names no place has never saved anything.
  if (saved || !destination.starts_with('/')) return;
  ViewConst::Keep(source);
  ViewConst::DeleteItem(destination);
}

}  // namespace

void TessarineStubWindow::PreInstallCopy() {
  ActionScript script(fPostCopy);
  while (const std::optional<Action> action = script.Next()) {
    if (Machine::Current().Ending()) return;
    if (action->kind == Action::Kind::PreInstallDelete) ViewConst::DeleteItem(action->value);
    if (action->kind == Action::Kind::PreInstallCopy) {
      Save(action->source, action->destination);
      fInstalled.push_back(action->destination);
    }
    Machine::Current().Yield();
  }
}
