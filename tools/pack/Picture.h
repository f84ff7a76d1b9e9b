// SPDX-License-Identifier: MIT
// Pictures of the main window: from PNG files to pixel strings.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "package/PixelStrings.h"

namespace pack {

struct Picture {
  std::size_t width = 0;
  std::size_t height = 0;
  std::string rgb;  ///< three bytes a pixel, row by row from the top; empty: no picture
};

/// The most that an installer expands: six digits a pixel.
constexpr std::size_t kMostPixels = kLongestPixelString / 6;

/// Reads a PNG file of any colour type; what is transparent shows white.
Picture LoadPng(const std::string& field, const std::filesystem::path& file);

/// The pixels as the record holds them.
std::string PixelString(const Picture& picture);

}  // namespace pack
