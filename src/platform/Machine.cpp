// SPDX-License-Identifier: MIT
// The current machine.
#include "platform/Machine.h"

namespace {
Machine* gMachine = nullptr;
}

Machine& Machine::Current() {
  return *gMachine;
}

void Machine::Install(Machine* machine) {
  gMachine = machine;
}
