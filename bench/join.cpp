// SPDX-License-Identifier: MIT
// Joins pieces as a split set's are; to be timed as a whole against cp of a file of their length.
// Usage: bench-join OUT PIECE...
#include "BareMachine.h"
#include "platform/BinaryStream.h"

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const BareMachine machine;
  std::optional<BinaryStream> out = BinaryStream::Create(FolderItem(argv[1]));
  for (int i = 2; out && i < argc; ++i) {
    std::optional<BinaryStream> piece = BinaryStream::Open(FolderItem(argv[i]));
    if (!piece || !out->WriteAllOf(*piece, [] { return true; })) return 1;
  }
  return out && out->Close() ? 0 : 1;
}
