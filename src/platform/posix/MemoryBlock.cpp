// SPDX-License-Identifier: MIT
#include "platform/MemoryBlock.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>

// The heap would keep freed pieces, and they would stay resident beside the string.
void MemoryBlock::Unmap::operator()(char* piece) const {
  ::munmap(piece, kPiece);
}

std::span<char> MemoryBlock::Room() {
  if (fPieces.empty() || fUsed == kPiece) {
    fPieces.emplace_back();
    void* piece = ::mmap(nullptr, kPiece, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (piece == MAP_FAILED) {
      fPieces.pop_back();
      throw std::bad_alloc();
    }
    fPieces.back().reset(static_cast<char*>(piece));
    fUsed = 0;
  }
  return {fPieces.back().get() + fUsed, kPiece - fUsed};
}

std::string MemoryBlock::Join() {
  std::string whole;
  whole.reserve(Size());  // resident only as far as it is filled
  while (!fPieces.empty()) {
    whole.append(fPieces.front().get(), fPieces.size() == 1 ? fUsed : kPiece);
    fPieces.pop_front();
  }
  return whole;
}
