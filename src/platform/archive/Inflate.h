// SPDX-License-Identifier: MIT
// From packed bytes to an entry's content, whole or as a stream.
#pragma once

#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/archive/Directory.h"
#include "platform/archive/Outlet.h"
#include "platform/archive/Result.h"
#include "platform/archive/Source.h"

namespace archive {

using Bytes = std::span<const unsigned char>;

/// Entries up to this length, packed and unpacked, are inflated in one piece; beyond, page faults eat what
/// that wins.
constexpr std::uint64_t kWholeLimit = std::uint64_t{1} << 20;

std::uint32_t Crc32(std::uint32_t crc, Bytes bytes);

/// One for each thread; its buffers are reused from entry to entry.
class Inflater {
 public:
  explicit Inflater(const std::atomic<bool>& stop) : fStop(stop) {}

  /// The content of an entry of at most kWholeLimit, length and checksum verified. Valid until the next
  /// call, and no longer than `packed`.
  Result<Bytes> Whole(Bytes packed, const Entry& entry);

  /// Sends the content to `outlet` piece by piece and never more than the entry's length. The checksum is
  /// left to who takes it. A length that turns out to be the rest of 2^32 is accepted once a first pass
  /// has shown that the full length and the checksum agree.
  Status Stream(const Source& source, const Entry& entry, Outlet& outlet);

 private:
  Status StreamStored(const Source& source, const Entry& entry, Outlet& outlet);
  Status StreamDeflated(const Source& source, const Entry& entry, Outlet& outlet);
  Result<std::uint64_t> LengthBeyond(const Source& source, const Entry& entry);

  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
  };
  const std::atomic<bool>& fStop;
  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> fWhole;
  std::unique_ptr<unsigned char[]> fContent;
};

}  // namespace archive
