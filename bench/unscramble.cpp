// SPDX-License-Identifier: MIT
// Unscrambles the named file; to be timed as a whole against cp of the same file.
#include "package/Scrambling.h"
#include "platform/posix/PosixMachine.h"

namespace {

class BareMachine : public PosixMachine {
 public:
  void DoEvents(int /*milliseconds*/) override {}
  void Yield() override {}
  void ShowURL(const std::string& /*address*/) override {}

 protected:
  bool OpenDocument(const FolderItem& /*item*/) override { return false; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  BareMachine machine;
  Machine::Install(&machine);
  EncryptDecryptFileEnd(argv[1], false);
  return 0;
}
