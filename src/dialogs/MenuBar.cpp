// SPDX-License-Identifier: MIT
#include "dialogs/MenuBar.h"

const MenuBar& MenuBar1() {
  static const MenuBar kMenus = {
      {"FileMenu", "&File", {{"FileQuit", "&Quit", "Cmd+Q", MenuCommand::Quit}}},
      {"EditMenu",
       "&Edit",
       {{"EditUndo", "&Undo", "Cmd+Z", MenuCommand::Undo},
        {"UntitledMenu1", "-", "", MenuCommand::Separator},
        {"EditCut", "Cu&t", "Cmd+X", MenuCommand::Cut},
        {"EditCopy", "&Copy", "Cmd+C", MenuCommand::Copy},
        {"EditPaste", "&Paste", "Cmd+V", MenuCommand::Paste},
        {"EditClear", "&Delete", "", MenuCommand::Clear},
        {"UntitledMenu0", "-", "", MenuCommand::Separator},
        {"EditSelectAll", "Select &All", "Cmd+A", MenuCommand::SelectAll}}},
  };
  return kMenus;
}
