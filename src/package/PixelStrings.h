// SPDX-License-Identifier: MIT
// Pictures as a record holds them: raw RGB bytes in hexadecimal, with runs of equal digits shortened:
// "0[6]FF" stands for "000000FF".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Picture.h"

/// The most characters that an expanded pixel string may have.
inline constexpr std::size_t kLongestPixelString = 50'000'000;

/// Expands the runs in place. False, with `pixels` as it was, for a run without its character or closing
/// bracket, and for a result beyond the limit.
[[nodiscard]] bool PixelStringExpand(std::string& pixels);

/// The inverse: a run is written short only where that saves room.
std::string PixelStringShorten(std::string_view digits);

/// The picture, in one pass and without the expanded text. None for a string that is damaged or too
/// long, or whose length isn't width times height times 6 digits.
std::optional<Picture> DecodePicture(std::int64_t width, std::int64_t height, std::string_view pixels);
