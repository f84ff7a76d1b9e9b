// SPDX-License-Identifier: MIT
// Cross-checks the directory with the headers that stand before the entries' data.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/reading/Directory.h"

namespace archive {

/// Entries by the place of their headers.
std::vector<std::uint32_t> OrderInFile(const std::vector<Entry>& entries);

/// Whether a local header is what the entry in the directory is, from the flags to the name; the
/// version that is needed may differ, for the offset is in the directory alone, and so may extra fields.
/// `header` holds all its bytes, up to the data.
Status CompareLocalHeader(std::string_view header, const Entry& entry);

/// Reads every local header, and the record behind the data where there is one. Each must agree with its
/// entry, and no entry may reach into the next one or into the directory at `limit`. Fills in Entry::data.
/// Gives up where `stop` is set. The calling thread does `meanwhile`, which must not look at that, before it
/// takes a hand in this.
Status CheckLocalHeaders(const Source& source, std::vector<Entry>& entries,
                         const std::vector<std::uint32_t>& order, std::uint64_t limit, unsigned threads,
                         const std::atomic<bool>* stop, const std::function<void()>& meanwhile);

}  // namespace archive
