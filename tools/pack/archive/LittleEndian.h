// SPDX-License-Identifier: MIT
// Numbers as archives store them.
#pragma once

#include <cstdint>
#include <string>

namespace pack {

/// Appends the lowest `width` bytes of `value`, at most eight of them, the lowest first.
inline void PutLittle(std::string& to, std::uint64_t value, unsigned width) {
  for (unsigned i = 0; i < width; ++i) to.push_back(static_cast<char>(value >> (8 * i)));
}

}  // namespace pack
