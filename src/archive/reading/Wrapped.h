// SPDX-License-Identifier: MIT
// Archives beyond 4 GiB that were written without zip64 records, as Mac tools do.
#pragma once

#include <cstdint>
#include <vector>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/reading/Directory.h"

namespace archive {

/// Replaces offsets and packed lengths that are rests of 2^32 by the true ones. Entries stand in the order
/// of the directory, one directly behind the other up to the directory at `limit`; a place counts only if
/// exactly one of the possible ones bears a local header with the entry's name.
Status RecoverWrapped(const Source& source, std::vector<Entry>& entries, std::uint64_t limit,
                      const std::atomic<bool>* stop);

}  // namespace archive
