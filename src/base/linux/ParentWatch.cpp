// SPDX-License-Identifier: MIT
#include "base/ParentWatch.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

bool EndWithParent(pid_t parent) {
  static_cast<void>(::prctl(PR_SET_PDEATHSIG, SIGTERM));
  return ::getppid() == parent;
}
