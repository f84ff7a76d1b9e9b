// SPDX-License-Identifier: MIT
// From a record's pixels to a picture, or to a message.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Picture.h"

/// The picture of a pixel string; none for an empty one, and none after a message for one that can't be
/// made into a picture of that size.
std::optional<Picture> PixelStringToPicture(std::int64_t width, std::int64_t height,
                                            const std::string& pixels);
