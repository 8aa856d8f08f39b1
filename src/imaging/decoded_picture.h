#pragma once

#include <functional>

#include "imaging/pixel_buffer.h"

/// What every decoder gives, and what the decoders share.
namespace ml::imaging {

struct PictureSize {
  int width = 0;
  int height = 0;
};

/// Chooses from the full size the size that the picture will be shown at. A decoder that can save work by
/// decoding smaller gives a picture which still covers it. An empty function stands for the full size.
using WantedSize = std::function<PictureSize(int width, int height)>;

struct DecodedPicture {
  PixelBuffer pixels;  ///< 8-bit, no padding; grey and CMYK pictures are turned into colours
  int fullWidth = 0;   ///< as the file says
  int fullHeight = 0;
  bool damaged = false;  ///< part of the data is missing or broken; what could be decoded is there
};

/// What shows where nothing could be decoded.
inline constexpr std::byte kUndecoded{0x80};

/// A red-green-blue buffer that holds kUndecoded everywhere.
inline PixelBuffer MakeUndecoded(int width, int height) {
  PixelBuffer buffer{width, height, width, PixelOrder::Rgb, 1, {}};
  buffer.data.resize(buffer.RowBytes() * static_cast<std::size_t>(height), kUndecoded);
  return buffer;
}

/// Throws LibraryError with `reason`.
[[noreturn]] void Refuse(const char* reason);

/// Refuses a picture without pixels or with more than `limit`.
void CheckPixelCount(long long width, long long height, long long limit);

/// Two values that stand for 0..1 as 0..255, multiplied: light through a layer of ink, a colour by its opacity.
constexpr int Multiply255(int a, int b) { return (a * b + 127) / 255; }

/// A sample of the given opacity over white, all 0..255.
constexpr int OverWhite(int sample, int opacity) { return Multiply255(sample, opacity) + 255 - opacity; }

}  // namespace ml::imaging
