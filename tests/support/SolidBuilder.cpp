// SPDX-License-Identifier: MIT
#include "support/SolidBuilder.h"

#define XXH_INLINE_ALL
#include <xxhash.h>
#include <zstd.h>

#include <algorithm>

#include "support/ZipBuilder.h"

namespace ziptest {

std::string PackFrame(const std::string& content, const FrameStyle& style) {
  static ZSTD_CCtx* const context = ZSTD_createCCtx();
  ZSTD_CCtx_reset(context, ZSTD_reset_session_and_parameters);
  ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, style.checksum);
  ZSTD_CCtx_setParameter(context, ZSTD_c_contentSizeFlag, style.size);
  if (style.window > 0) ZSTD_CCtx_setParameter(context, ZSTD_c_windowLog, style.window);
  if (!style.size || style.window > 0) ZSTD_CCtx_setPledgedSrcSize(context, ZSTD_CONTENTSIZE_UNKNOWN);
  std::string packed(ZSTD_compressBound(content.size()), '\0');
  ZSTD_inBuffer in{content.data(), content.size(), 0};
  ZSTD_outBuffer out{packed.data(), packed.size(), 0};
  if (style.window > 0)
    while (in.pos < in.size) ZSTD_compressStream2(context, &out, &in, ZSTD_e_continue);
  ZSTD_compressStream2(context, &out, &in, ZSTD_e_end);
  packed.resize(out.pos);
  if (style.dictionary) {  // the number of one, as if it had been used
    packed[4] = static_cast<char>(packed[4] | 1);
    packed.insert((packed[4] & 0x20) != 0 ? 5 : 6, 1, '\x07');
  }
  return packed;
}

std::string Solid(const std::string& content, std::size_t length,
                  const std::function<void(Frames&)>& change) {
  Frames frames;
  for (std::size_t at = 0; at < content.size(); at += length) {
    const std::string part = content.substr(at, length);
    frames.packed.push_back(PackFrame(part));
    frames.rows.push_back({static_cast<std::uint32_t>(frames.packed.back().size()),
                           static_cast<std::uint32_t>(part.size()),
                           static_cast<std::uint32_t>(XXH64(part.data(), part.size(), 0))});
  }
  frames.count = static_cast<std::uint32_t>(frames.rows.size());
  if (change) change(frames);
  std::string table;
  for (const FrameRow& row : frames.rows) {
    table += Le(row.packed, 4) + Le(row.size, 4);
    if ((frames.flags & 0x80) != 0) table += Le(row.checksum, 4);
  }
  table += Le(frames.count, 4) + Le(frames.flags, 1) + Le(frames.endMark, 4);
  std::string bytes;
  for (const std::string& frame : frames.packed) bytes += frame;
  return bytes + frames.before + Le(frames.mark, 4) + Le(table.size() + frames.tableLonger, 4) + table +
         frames.behind;
}

}  // namespace ziptest
