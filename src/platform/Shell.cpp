// SPDX-License-Identifier: MIT
#include "platform/Shell.h"

#include "platform/Machine.h"

void Shell::Execute(const std::string& command) {
  fErrorCode = Machine::Current().Execute(command);
}
