// SPDX-License-Identifier: MIT
#include "actions/SharedDetour.h"

#include "platform/FolderItem.h"
#include "platform/Machine.h"
#include "util/Clock.h"
#include "util/Files.h"
#include "util/Paths.h"
#include "util/Strings.h"

bool GoesThroughSharedFolder(const std::string& destination) {
  return ViewConst::Pos("/Applications", destination) == 1 && ViewConst::Pos(".app", destination) > 0;
}

void TakeThroughSharedFolder(const std::string& bundle) {
  const std::string shared = Machine::Current().SharedFolder();
  ViewConst::ForceDirectories(shared, false);
  if (!ViewConst::DirectoryExists(shared)) return;
  const FolderItem onTheWay = FolderItem(shared).Child(FolderItem(bundle).Name());
  const std::string& temporary = onTheWay.NativePath();
  if (temporary == shared) return;
  ViewConst::DeleteFolderOrApp(temporary);
  // What others could exchange on the way must not come back into the applications.
  if (!onTheWay.CreateAsFolder()) return;
  if (!onTheWay.IsOwn() || !ViewConst::CopyFolder(bundle, temporary)) {
    ViewConst::DeleteFolderOrApp(temporary);
    return;
  }
  ViewConst::Sleep(1);
  // The second writing stands whole before the first goes; one that fails leaves the first as it is.
  static_cast<void>(ViewConst::CopyFileB(temporary, bundle));
  ViewConst::DeleteFolderOrApp(temporary);
  ViewConst::Sleep(1);
}
