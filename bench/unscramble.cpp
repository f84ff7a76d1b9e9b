// SPDX-License-Identifier: MIT
// Unscrambles the named file; to be timed as a whole against cp of the same file.
#include "BareMachine.h"
#include "package/Scrambling.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const BareMachine machine;
  EncryptDecryptFileEnd(argv[1], false);
  return 0;
}
