// SPDX-License-Identifier: MIT
// The wait for the Payload's expansion.
#include <algorithm>
#include <limits>

#include "engine/WaitEstimate.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"

namespace {

/// One system version is known for slow expansion: any with the minor number 13.
bool IsSlowSystem() {
  std::int64_t major = 0;
  std::int64_t minor = 0;
  return Machine::Current().SystemVersion(major, minor) && minor == 13;
}

}  // namespace

bool TessarineStubWindow::ZipFileProcess(const std::string& /*path*/, const FolderItem& file) {
  Machine& machine = Machine::Current();
  const std::int64_t estimate =
      std::min<std::int64_t>(EstimateTicks(file.Length(), IsSlowSystem()), std::numeric_limits<int>::max());
  ProgressBar1.SetMaximum(static_cast<int>(estimate));
  ProgressBar1.SetVisible(true);
  const auto show = [this](double value) {
    ProgressBar1.SetValue(static_cast<int>(value));
    ProgressBar1.Refresh();
  };
  if (const std::shared_ptr<Expansion> expansion = machine.ExpansionOf(file)) {
    while (expansion->Running()) {
      show(expansion->Done() * static_cast<double>(estimate));
      machine.DoEvents(10);
      if (machine.Ending() && !fOldIsGone) expansion->Stop();
    }
    show(expansion->Done() * static_cast<double>(estimate));
    return expansion->Succeeded();
  }
  const std::int64_t start = machine.Ticks();
  do {
    show(static_cast<double>(machine.Ticks() - start));
    machine.DoEvents(10);
  } while (start + estimate >= machine.Ticks() && !machine.Ending());
  return true;
}
