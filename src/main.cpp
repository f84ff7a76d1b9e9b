// SPDX-License-Identifier: MIT
// The installer: one run is one install.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>

#include "base/StandardStreams.h"
#include "package/SplitSet.h"
#include "platform/Dialogs.h"
#include "platform/posix/DescriptorProbe.h"
#include "platform/posix/ThreadProbe.h"
#include "platform/qt/QtMachine.h"
#include "session/App.h"
#include "util/Paths.h"

namespace {

/// Programs before and after the install answer over the clipboard, and a split set's copy hears by it where
/// its pieces are.
bool SharesClipboard() {
  if (ViewConst::ResourceFolder().Child(kFirstPiece).Exists()) return true;
  const std::optional<InstallerRecord> record = ReadRecord();
  return record && !(record->fExecuteBeforeName.empty() && record->fExecuteAfterName.empty());
}

struct Needs {
  unsigned threads, descriptors;
};
/// The toolkit's own, then those of its painting and of the expansion.
constexpr Needs kForWindows{3, 16}, kForAnInstall{8, 24};

/// A sentence for the user, or none.
const char* ShortageOf(const Needs& needs) {
  if (!DescriptorsCanOpen(needs.descriptors))
    return "This installer needs more open files than this user may have.";
  if (!ThreadsCanStart(needs.threads)) return "This installer needs more processes than this user may start.";
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  OpenStandardStreams();
  // A helper or program that ends while it is written to must not end the install.
  std::signal(SIGPIPE, SIG_IGN);
  // A limit on the size of files comes as an error of the write.
  std::signal(SIGXFSZ, SIG_IGN);
  // Started by a program that ignores its children's ends, this one would never learn how its own ended.
  std::signal(SIGCHLD, SIG_DFL);
  auto machine = std::make_unique<QtMachine>();
  Machine::Install(machine.get());
  if (const char* shortage = ShortageOf(kForWindows)) {
    std::fprintf(stderr, "%s\n", shortage);
    return 0;
  }
  Application application(argc, argv, SharesClipboard);
  application.QuitOnSignals();
  const char* shortage = ShortageOf(kForAnInstall);
  if (shortage != nullptr) MessageBox(shortage);
  const int status = shortage == nullptr ? App(application).Run() : 0;
  machine.reset();
  std::fflush(nullptr);
  // The toolkit's Wayland client, taken down, can wait for its own thread for ever.
  ::_exit(status);
}
