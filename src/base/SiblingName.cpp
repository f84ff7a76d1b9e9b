// SPDX-License-Identifier: MIT
#include "base/SiblingName.h"

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

std::string RandomName() {
  std::random_device source;
  const std::uint64_t number = (std::uint64_t{source()} << 32) | source();
  char name[20];
  std::snprintf(name, sizeof name, "%016" PRIx64, number);
  return name;
}

std::string SiblingName(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1) + ".tessarine-" + RandomName();
}
