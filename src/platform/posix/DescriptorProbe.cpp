// SPDX-License-Identifier: MIT
#include "platform/posix/DescriptorProbe.h"

#include <fcntl.h>

#include <vector>

#include "base/Descriptor.h"

bool DescriptorsCanOpen(unsigned count) {
  std::vector<Descriptor> opened;
  while (opened.size() < count) {
    opened.emplace_back(::open("/", O_PATH | O_CLOEXEC));
    if (!opened.back()) return false;
  }
  return true;
}
