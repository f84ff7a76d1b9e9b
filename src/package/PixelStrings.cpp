// SPDX-License-Identifier: MIT
#include "package/PixelStrings.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "util/Strings.h"

namespace {

/// Reads a pixel string as plain stretches and runs, and hands both to a sink:
/// `bool Text(std::string_view)` and `bool Run(char, std::size_t)`; false ends the walk.
template <typename Sink>
bool WalkRuns(std::string_view pixels, Sink& sink) {
  while (true) {
    const std::size_t open = pixels.find('[');
    if (open == std::string_view::npos) return sink.Text(pixels);
    const std::size_t close = pixels.find(']', open);
    if (open == 0 || close == std::string_view::npos) return false;
    const std::int64_t count = ViewConst::IntegerVal(pixels.substr(open + 1, close - open - 1));
    if (count > static_cast<std::int64_t>(kLongestPixelString)) return false;
    if (!sink.Text(pixels.substr(0, open - 1))) return false;
    if (count > 0 && !sink.Run(pixels[open - 1], static_cast<std::size_t>(count))) return false;
    pixels.remove_prefix(close + 1);
  }
}

class TextSink {
 public:
  bool Text(std::string_view text) {
    fText.append(text);
    return fText.size() <= kLongestPixelString;
  }
  bool Run(char digit, std::size_t count) {
    if (count > kLongestPixelString - fText.size()) return false;
    fText.append(count, digit);
    return true;
  }
  std::string fText;
};

/// Puts digits together to the bytes of a picture of known size.
class ByteSink {
 public:
  explicit ByteSink(std::vector<std::uint8_t>& bytes) : fBytes(bytes) {}

  bool Text(std::string_view text) {
    if (text.size() > Room()) return false;
    if (fHalf && !text.empty()) {
      PutDigit(ViewConst::HexDigitValue(text.front()));
      text.remove_prefix(1);
    }
    const std::size_t pairs = text.size() / 2;
    ViewConst::MemoryBlockHexToByte(text.data(), fBytes.data() + fCount, pairs);
    fCount += pairs;
    if (text.size() % 2 == 1) PutDigit(ViewConst::HexDigitValue(text.back()));
    return true;
  }

  bool Run(char digit, std::size_t count) {
    if (count > Room()) return false;
    const std::uint8_t value = ViewConst::HexDigitValue(digit);
    if (fHalf) {
      PutDigit(value);
      --count;
    }
    std::memset(fBytes.data() + fCount, static_cast<std::uint8_t>(17 * value), count / 2);
    fCount += count / 2;
    if (count % 2 == 1) PutDigit(value);
    return true;
  }

  bool Full() const { return Room() == 0; }

 private:
  /// Digits that still have a place.
  std::size_t Room() const { return 2 * (fBytes.size() - fCount) - (fHalf ? 1 : 0); }

  void PutDigit(std::uint8_t value) {
    if (fHalf)
      fBytes[fCount++] = static_cast<std::uint8_t>(fHigh + value);
    else
      fHigh = static_cast<std::uint8_t>(16 * value);
    fHalf = !fHalf;
  }

  std::vector<std::uint8_t>& fBytes;
  std::size_t fCount = 0;
  std::uint8_t fHigh = 0;
  bool fHalf = false;
};

}  // namespace

bool PixelStringExpand(std::string& pixels) {
  TextSink sink;
  if (!WalkRuns(pixels, sink)) return false;
  pixels = std::move(sink.fText);
  return true;
}

std::string PixelStringShorten(std::string_view digits) {
  std::string pixels;
  while (!digits.empty()) {
    const std::size_t count = std::min(digits.find_first_not_of(digits.front()), digits.size());
    const std::string run = digits.front() + ("[" + std::to_string(count) + "]");
    pixels += run.size() < count ? run : digits.substr(0, count);
    digits.remove_prefix(count);
  }
  return pixels;
}

std::optional<Picture> DecodePicture(std::int64_t width, std::int64_t height, std::string_view pixels) {
  constexpr auto kMostPixels = static_cast<std::int64_t>(kLongestPixelString / 6);
  if (width <= 0 || height <= 0 || width > kMostPixels || height > kMostPixels / width) return std::nullopt;
  try {
    Picture picture{static_cast<int>(width), static_cast<int>(height), {}, false};
    picture.pixels.resize(static_cast<std::size_t>(width * height) * 3);
    ByteSink sink(picture.pixels);
    if (!WalkRuns(pixels, sink) || !sink.Full()) return std::nullopt;
    return picture;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}
