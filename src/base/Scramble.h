// SPDX-License-Identifier: MIT
// The light positional scrambling of packages: every second byte of a stream, from the second, is raised by
// one, modulo 256. It has no key and keeps the length.
#pragma once

#include <cstddef>
#include <cstdint>

/// `bytes` begin at `place` of the stream.
void ScrambleBytes(char* bytes, std::size_t count, std::uint64_t place);
void UnscrambleBytes(char* bytes, std::size_t count, std::uint64_t place);
