// SPDX-License-Identifier: MIT
#include "dialogs/PixelPicture.h"

#include "dialogs/Posing.h"
#include "package/PixelStrings.h"
#include "util/GlobalsKv.h"

std::optional<Picture> PixelStringToPicture(std::int64_t width, std::int64_t height,
                                            const std::string& pixels) {
  if (pixels.empty()) return std::nullopt;
  std::optional<Picture> picture = DecodePicture(width, height, pixels);
  if (!picture) {
    GlobalsKv::gConflictType = 39;
    GlobalsKv::PoseConflictDialog();
  }
  return picture;
}
