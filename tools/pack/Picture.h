// SPDX-License-Identifier: MIT
// Pictures of the main window: from PNG files to the pixel strings of the record.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace pack {

struct Picture {
  std::size_t width = 0;
  std::size_t height = 0;
  std::string rgb;  ///< three bytes a pixel, row by row from the top; empty: no picture
};

/// The most pixels that an installer expands: 50,000,000 hexadecimal digits, six a pixel.
constexpr std::size_t kMostPixels = 50'000'000 / 6;

/// Reads a PNG file of any colour type; what is transparent shows white.
Picture LoadPng(const std::string& field, const std::filesystem::path& file);

/// Shortens runs: "000000FF" becomes "0[6]FF". A run is written short only where that saves room.
std::string ShortenRuns(const std::string& digits);

/// The picture as a field of the record: pixels, width and height, separated by commas.
std::string PictureField(const Picture& picture);

}  // namespace pack
