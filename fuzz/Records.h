// SPDX-License-Identifier: MIT
// The records of an input that is nearly an archive, as they can be found by their marks alone.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "archive/reading/ZipFormat.h"

namespace fuzz {

/// Offsets of the local headers, the central headers and the end record. Local and central ones make pairs
/// in their order.
struct Records {
  std::vector<std::size_t> headers, directory;
  std::size_t end = std::string::npos;

  std::size_t Pairs() const { return std::min(headers.size(), directory.size()); }
  /// Where what belongs to a local header ends.
  std::size_t NextOf(std::size_t pair) const {
    return pair + 1 < headers.size() ? headers[pair + 1] : directory.front();
  }
};

/// Only records that have room in the input.
Records FindRecords(const std::string& bytes);

/// Where the data behind a local header begins, going by its lengths.
inline std::size_t DataOf(const std::string& bytes, std::size_t header) {
  const char* p = bytes.data() + header;
  return header + archive::local::kLength + archive::Load16(p + archive::local::kNameLength) +
         archive::Load16(p + archive::local::kExtraLength);
}

template <class Value>
void Store(std::string& bytes, std::size_t at, std::uint64_t value) {
  const Value narrow = static_cast<Value>(value);
  std::memcpy(bytes.data() + at, &narrow, sizeof narrow);
}

}  // namespace fuzz
