// SPDX-License-Identifier: MIT
#include "help/KvHelp.h"

#include "platform/Machine.h"
#include "util/Files.h"
#include "util/Paths.h"
#include "util/Strings.h"

void KvHelp::Show(const std::string& topic) {
  SetTopic(topic);
  ShowTopic();
}

void KvHelp::DialogStart(const std::string& topic) {
  if (fDialogHelpTopic == 0) fDialogHelpQueue[0] = GetTopic();
  if (fDialogHelpTopic < 20) fDialogHelpQueue.at(++fDialogHelpTopic) = topic;
  SetTopic(topic);
}

void KvHelp::DialogEnd() {
  if (fDialogHelpTopic >= 1)
    SetTopic(fDialogHelpQueue.at(--fDialogHelpTopic));
  else
    Machine::Current().Beep();
}

void KvHelp::SetOmbrelRuntimeFolderPath() {
  const std::string folder = ViewConst::ExtractFilePath(Machine::Current().ExecutableFile());
  const std::string bundled = folder.substr(0, ViewConst::FindText(folder, "Contents", 0)) + "Contents/Data";
  OmbrelRuntimeFolderPath =
      (ViewConst::FileExists(bundled) ? bundled : folder + "Data") + ViewConst::GetPathSeparator();
}
