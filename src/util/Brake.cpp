// SPDX-License-Identifier: MIT
#include "util/Brake.h"

#include <optional>

#include "platform/Brake.h"
#include "platform/FolderItem.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "util/Debug.h"
#include "util/Paths.h"

namespace ViewConst {

namespace {

/// Made once: the accounts of a large network take their time.
struct Kept {
  std::string home;
  std::string bundle;
  KeptFolders folders{};
};

Kept& Current() {
  static std::optional<Kept> kept;
  Machine& machine = Machine::Current();
  const std::string bundle = RunningBundle();
  if (kept && kept->home == machine.HomeFolder() && kept->bundle == bundle) return *kept;
  kept = Kept{machine.HomeFolder(), bundle};
  kept->folders.AddEverybodys();
  for (const std::string& folder : {kept->home, machine.DesktopFolder(), machine.TemporaryFolder()})
    kept->folders.Add(folder);
  return *kept;
}

}  // namespace

bool MayGo(const std::string& path) {
  const FolderItem item(path);
  if (!item.Exists()) return true;
  const Kept& kept = Current();
  const std::string bundle = FolderItem(kept.bundle).ResolvedPath();
  if (LiesIn(item.Place(), bundle) || (item.Directory() && LiesIn(bundle, item.Place()))) return false;
  return MayGoWithInstaller(path);
}

bool MayGoWithInstaller(const std::string& path) {
  const std::string reason = ReasonToStay(FolderItem(path).NativePath(), Current().folders);
  if (!reason.empty()) DebugConsole(path + " stays: " + reason);
  return reason.empty();
}

void Keep(const std::string& path) {
  Current().folders.Add(path);
}

}  // namespace ViewConst
