// SPDX-License-Identifier: MIT
// How an archive that is made from a folder is packed.
#pragma once

namespace pack {

enum class Method {
  kSolid,    ///< a zip of stored entries, compressed as a whole in frames
  kDeflate,  ///< a zip as every tool writes it
  kStore,    ///< a zip without compression
};

enum class Level { kFast, kNormal, kBest };

struct Compression {
  Method method = Method::kSolid;
  Level level = Level::kNormal;
};

}  // namespace pack
