// SPDX-License-Identifier: MIT
// The one form that an archive has inside of frames, by which every byte's place is known without reading it.
#pragma once

#include <cstdint>
#include <vector>

#include "archive/Result.h"
#include "archive/reading/Directory.h"
#include "archive/reading/EndRecord.h"

namespace archive {

/// Entries are stored, none encrypted or streamed, one directly behind the other from the first byte on to
/// the directory. Fills in Entry::data; `order` is by the place of the headers, whose bytes are looked at
/// when they are decoded.
Status PlaceEntries(const DirectoryPlace& place, const std::vector<std::uint32_t>& order,
                    std::vector<Entry>& entries);

}  // namespace archive
