// SPDX-License-Identifier: MIT
#include "pack/Interrupt.h"

#include <atomic>
#include <csignal>

namespace pack {
namespace {

std::atomic<int> gSignal{0};
static_assert(std::atomic<int>::is_always_lock_free);

void Note(int signal) {
  gSignal = signal;
}

}  // namespace

void NoteSignals() {
  struct sigaction note {};
  note.sa_handler = Note;
  note.sa_flags = SA_RESTART;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &note, nullptr);  // as nohup wants it
  }
}

void CheckInterrupted() {
  if (gSignal != 0) throw Interrupted{gSignal};
}

}  // namespace pack
