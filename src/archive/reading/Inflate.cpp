// SPDX-License-Identifier: MIT
// Whole entries through libdeflate, streams through ISA-L.
#include "archive/reading/Inflate.h"

#include <isa-l/crc.h>

#include <algorithm>
#include <cerrno>

#include "archive/reading/ZipFormat.h"

namespace archive {
namespace {

Status Damaged(const Entry& entry) {
  return Fail("the data of the entry ", Quoted(entry.name), " is damaged");
}
Status WrongLength(const Entry& entry, std::string_view how) {
  return Fail("the entry ", Quoted(entry.name), " is ", how, " than it states");
}

/// One entry's deflate stream.
class DeflateStream {
 public:
  DeflateStream(const Source& source, const Entry& entry)
      : fSource(source),
        fEntry(entry),
        fState(std::make_unique_for_overwrite<inflate_state>()),
        fInput(std::make_unique_for_overwrite<unsigned char[]>(kInput)),
        fNext(entry.data),
        fLeft(entry.compressed) {
    isal_inflate_init(fState.get());
  }

  bool Finished() const { return fState->block_state == ISAL_BLOCK_FINISH; }

  /// Fills `out` unless the stream ends before. The end must be the end of the packed bytes too.
  Result<std::size_t> Read(std::span<unsigned char> out) {
    fState->next_out = out.data();
    fState->avail_out = static_cast<std::uint32_t>(out.size());
    while (fState->avail_out > 0 && !Finished()) {
      const bool dry = fState->avail_in == 0 && fLeft == 0;
      if (fState->avail_in == 0 && !Refill()) return FailedCall("read the data of the entry", fEntry.name);
      const std::uint32_t before = fState->avail_out;
      if (isal_inflate(fState.get()) != ISAL_DECOMP_OK) return Damaged(fEntry);
      if (dry && !Finished() && fState->avail_out == before) return Damaged(fEntry);
    }
    if (Finished() && fLeft + fState->avail_in + static_cast<unsigned>(fState->read_in_length) / 8 != 0)
      return Damaged(fEntry);
    return out.size() - fState->avail_out;
  }

 private:
  static constexpr std::size_t kInput = 128 << 10;

  bool Refill() {
    const std::size_t length = std::min<std::uint64_t>(fLeft, kInput);
    if (!fSource.ReadAt(fNext, fInput.get(), length)) return false;
    fNext += length;
    fLeft -= length;
    fState->next_in = fInput.get();
    fState->avail_in = static_cast<std::uint32_t>(length);
    return true;
  }

  const Source& fSource;
  const Entry& fEntry;
  std::unique_ptr<inflate_state> fState;
  std::unique_ptr<unsigned char[]> fInput;
  std::uint64_t fNext, fLeft;
};

}  // namespace

std::uint32_t Crc32(std::uint32_t crc, Bytes bytes) {
  return crc32_gzip_refl(crc, bytes.data(), bytes.size());
}

Status WrongChecksum(const Entry& entry) {
  return Fail("the checksum of the entry ", Quoted(entry.name), " is wrong");
}

bool MayBeLonger(const Entry& entry) {
  constexpr std::uint64_t kBestRatio = 1032;  // of deflate
  return entry.sizeWraps && entry.Deflated() && entry.compressed >= kWrap32 / kBestRatio;
}

Result<Bytes> Inflater::Whole(Bytes packed, const Entry& entry, std::span<unsigned char> room) {
  Bytes content = packed;
  if (entry.Deflated()) {
    if (!fWhole) {
      fWhole.reset(libdeflate_alloc_decompressor());
      if (!fWhole) return Fail("there is not enough memory");
    }
    std::size_t used = 0, made = 0;
    const libdeflate_result result = libdeflate_deflate_decompress_ex(
        fWhole.get(), packed.data(), packed.size(), room.data(), entry.size, &used, &made);
    if (result == LIBDEFLATE_INSUFFICIENT_SPACE) return WrongLength(entry, "longer");
    if (result != LIBDEFLATE_SUCCESS || used != packed.size()) return Damaged(entry);
    if (made != entry.size) return WrongLength(entry, "shorter");
    content = room.first(made);
  }
  if (Crc32(0, content) != entry.crc) return WrongChecksum(entry);
  return content;
}

Status Inflater::Stream(const Source& source, const Entry& entry, Outlet& outlet, const Admit& admit) {
  return entry.Deflated() ? StreamDeflated(source, entry, outlet, admit)
                          : StreamStored(source, entry, outlet);
}

Status Inflater::StreamStored(const Source& source, const Entry& entry, Outlet& outlet) {
  for (std::uint64_t done = 0; done < entry.size;) {
    if (fStop) return Interrupted();
    const std::span<unsigned char> buffer = outlet.Buffer();
    const std::size_t length = std::min<std::uint64_t>(buffer.size(), entry.size - done);
    if (!source.ReadAt(entry.data + done, buffer.data(), length))
      return FailedCall("read the data of the entry", entry.name);
    Status status = outlet.Put(length);
    if (!status.Ok()) return status;
    done += length;
  }
  return {};
}

Status Inflater::StreamDeflated(const Source& source, const Entry& entry, Outlet& outlet,
                                const Admit& admit) {
  DeflateStream stream(source, entry);
  std::uint64_t limit = entry.size, done = 0;
  while (!stream.Finished()) {
    if (fStop) return Interrupted();
    const std::span<unsigned char> buffer = outlet.Buffer();
    // One byte of room beyond the stated end shows a stream that goes on.
    const std::size_t room = std::min<std::uint64_t>(buffer.size(), limit - done + 1);
    Result<std::size_t> made = stream.Read(buffer.first(room));
    if (!made.Ok()) return made.Failure();
    done += *made;
    if (done > limit) {
      Result<std::uint64_t> beyond = LengthBeyond(source, entry);
      if (!beyond.Ok()) return beyond.Failure();
      Status admitted = admit(*beyond - limit);
      if (!admitted.Ok()) return admitted;
      limit = *beyond;
    }
    Status status = *made > 0 ? outlet.Put(*made) : Status();
    if (!status.Ok()) return status;
  }
  return done == limit ? Status() : WrongLength(entry, "shorter");
}

Result<std::uint64_t> Inflater::LengthBeyond(const Source& source, const Entry& entry) {
  if (!MayBeLonger(entry)) return WrongLength(entry, "longer");
  DeflateStream stream(source, entry);
  const auto scratch = std::make_unique_for_overwrite<unsigned char[]>(kPiece);
  std::uint64_t length = 0;
  std::uint32_t crc = 0;
  while (!stream.Finished()) {
    if (fStop) return Interrupted();
    Result<std::size_t> made = stream.Read({scratch.get(), kPiece});
    if (!made.Ok()) return made.Failure();
    crc = Crc32(crc, {scratch.get(), *made});
    length += *made;
  }
  if (length % kWrap32 != entry.size || crc != entry.crc) return WrongLength(entry, "longer");
  return length;
}

}  // namespace archive
