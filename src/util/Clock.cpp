// SPDX-License-Identifier: MIT
#include "util/Clock.h"

#include "platform/Machine.h"

namespace ViewConst {

void Sleep(double seconds) {
  Machine& machine = Machine::Current();
  const std::int64_t end = machine.Ticks() + static_cast<std::int64_t>(seconds * 60);
  while (machine.Ticks() < end && !machine.Ending()) machine.DoEvents(10);
}

}  // namespace ViewConst
