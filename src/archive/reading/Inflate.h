// SPDX-License-Identifier: MIT
// From packed bytes to an entry's content, whole or as a stream.
#pragma once

#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "archive/Result.h"
#include "archive/Source.h"
#include "archive/reading/Directory.h"
#include "archive/reading/Outlet.h"

namespace archive {

using Bytes = std::span<const unsigned char>;

std::uint32_t Crc32(std::uint32_t crc, Bytes bytes);

/// For an entry whose content has another checksum than it states.
Status WrongChecksum(const Entry& entry);

/// Whether the content may be longer than stated by multiples of 2^32: the writer knew no longer lengths, and
/// there are enough packed bytes.
bool MayBeLonger(const Entry& entry);

/// One for each thread.
class Inflater {
 public:
  explicit Inflater(const std::atomic<bool>& stop) : fStop(stop) {}

  /// The content, length and checksum verified. It stands in `room`, which holds at least the entry's length,
  /// or, if stored, in `packed`.
  Result<Bytes> Whole(Bytes packed, const Entry& entry, std::span<unsigned char> room);

  /// Says whether there is room for so many bytes beyond the length that an entry states.
  using Admit = std::function<Status(std::uint64_t)>;

  /// Sends the content to `outlet` piece by piece and never more than the entry's length. The checksum is
  /// left to who takes it. A length that turns out to be the rest of 2^32 is accepted once a first pass
  /// has shown that the full length and the checksum agree, and `admit` that there is room for it.
  Status Stream(const Source& source, const Entry& entry, Outlet& outlet, const Admit& admit);

 private:
  Status StreamStored(const Source& source, const Entry& entry, Outlet& outlet);
  Status StreamDeflated(const Source& source, const Entry& entry, Outlet& outlet, const Admit& admit);
  Result<std::uint64_t> LengthBeyond(const Source& source, const Entry& entry);

  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
  };
  const std::atomic<bool>& fStop;
  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> fWhole;
};

}  // namespace archive
