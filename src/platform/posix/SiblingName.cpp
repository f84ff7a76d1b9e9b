// SPDX-License-Identifier: MIT
#include "platform/posix/SiblingName.h"

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

std::string SiblingName(const std::string& path) {
  std::random_device source;
  const std::uint64_t number = (std::uint64_t{source()} << 32) | source();
  char name[40];
  std::snprintf(name, sizeof name, ".tessarine-%016" PRIx64, number);
  return path.substr(0, path.rfind('/') + 1) + name;
}
