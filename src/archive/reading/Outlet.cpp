// SPDX-License-Identifier: MIT
// The two ways from an inflater to a taker.
#include "archive/reading/Outlet.h"

namespace archive {

DirectOutlet::DirectOutlet(std::unique_ptr<unsigned char[]>& buffer, Taker& taker) : fTaker(taker) {
  if (!buffer) buffer = std::make_unique_for_overwrite<unsigned char[]>(kPiece);
  fBuffer = buffer.get();
}

PipedOutlet::PipedOutlet(Taker& taker)
    : fTaker(taker),
      fBytes(std::make_unique_for_overwrite<unsigned char[]>(kBuffers * kPiece)),
      fThread(&PipedOutlet::Run, this) {}

PipedOutlet::~PipedOutlet() {
  // A close that already happened reported its failure; one that didn't has nobody who asks.
  if (fThread.joinable()) static_cast<void>(Close());
}

std::span<unsigned char> PipedOutlet::Buffer() {
  std::unique_lock lock(fMutex);
  fChanged.wait(lock, [this] { return fPut - fTaken < kBuffers; });
  return {fBytes.get() + fPut % kBuffers * kPiece, kPiece};
}

Status PipedOutlet::Put(std::size_t length) {
  const std::lock_guard lock(fMutex);
  fLengths[fPut % kBuffers] = length;
  ++fPut;
  fChanged.notify_all();
  return fFailure;
}

Status PipedOutlet::Close() {
  {
    const std::lock_guard lock(fMutex);
    fClosed = true;
    fChanged.notify_all();
  }
  fThread.join();
  return fFailure;
}

void PipedOutlet::Run() {
  std::unique_lock lock(fMutex);
  while (true) {
    fChanged.wait(lock, [this] { return fPut > fTaken || fClosed; });
    if (fPut == fTaken) return;
    const std::size_t slot = fTaken % kBuffers;
    if (fFailure.Ok()) {
      lock.unlock();
      Status status = fTaker.Take({fBytes.get() + slot * kPiece, fLengths[slot]});
      lock.lock();
      fFailure = std::move(status);
    }
    ++fTaken;
    fChanged.notify_all();
  }
}

}  // namespace archive
