// SPDX-License-Identifier: MIT
#include "base/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

void OpenStandardStreams() {
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    // The lowest free number is the stream's own.
    if (::fcntl(stream, F_GETFD) == -1) static_cast<void>(::open("/dev/null", O_RDWR));
  }
}
