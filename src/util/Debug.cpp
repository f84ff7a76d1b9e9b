// SPDX-License-Identifier: MIT
#include "util/Debug.h"

#include <fstream>

#include "platform/Machine.h"

namespace ViewConst {

bool gDebugConsole = false;
std::string gDebugStr;

void DebugConsole(const std::string& text) {
  if (gDebugConsole) {
    std::ofstream log(Machine::Current().DesktopFolder() + "/lumarert.log", std::ios::app);
    log << text << '\n';
  }
  gDebugStr = text;
}

}  // namespace ViewConst
