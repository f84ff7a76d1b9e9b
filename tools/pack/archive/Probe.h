// SPDX-License-Identifier: MIT
// Tells what is compressed already, by trying.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "pack/archive/InputFile.h"

struct ZSTD_CCtx_s;

namespace pack {

class Probe {
 public:
  Probe();
  /// Whether compressing the file would be lost time. Looks at a few small samples.
  bool IsDense(const InputFile& file, std::uint64_t size);

 private:
  struct Free {
    void operator()(ZSTD_CCtx_s* context) const;
  };
  std::unique_ptr<ZSTD_CCtx_s, Free> fContext;
  std::string fRoom;
};

}  // namespace pack
