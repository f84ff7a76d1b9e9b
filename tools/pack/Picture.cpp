// SPDX-License-Identifier: MIT
// PNG in, pixel string out.
#include "pack/Picture.h"

#include <png.h>

#include <vector>

#include "pack/Refusal.h"
#include "util/Strings.h"

namespace pack {
namespace {

char OverWhite(png_byte value, png_byte alpha) {
  return static_cast<char>((value * alpha + 255 * (255 - alpha) + 127) / 255);
}

// The library's image holds memory of its own until it is freed.
struct PngImage : png_image {
  PngImage() : png_image{} { version = PNG_IMAGE_VERSION; }
  ~PngImage() { png_image_free(this); }
  PngImage(const PngImage&) = delete;
  PngImage& operator=(const PngImage&) = delete;
};

}  // namespace

Picture LoadPng(const std::string& field, const std::filesystem::path& file) {
  PngImage image;
  const auto refuse = [&] { throw Refusal(field, "names no PNG: " + file.string() + ": " + image.message); };
  if (png_image_begin_read_from_file(&image, file.c_str()) == 0) refuse();
  Picture picture{image.width, image.height, {}};
  if (picture.width > kMostPixels / picture.height) {
    throw Refusal(field, "has more than " + std::to_string(kMostPixels) + " pixels: " + file.string());
  }
  image.format = PNG_FORMAT_RGBA;
  std::vector<png_byte> rgba(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, rgba.data(), 0, nullptr) == 0) refuse();
  picture.rgb.reserve(picture.width * picture.height * 3);
  for (std::size_t i = 0; i + 3 < rgba.size(); i += 4) {
    for (std::size_t channel = 0; channel < 3; ++channel)
      picture.rgb += OverWhite(rgba[i + channel], rgba[i + 3]);
  }
  return picture;
}

std::string PixelString(const Picture& picture) {
  return PixelStringShorten(ViewConst::HexFromBytes(picture.rgb));
}

}  // namespace pack
