#pragma once

#include <cstddef>
#include <vector>

namespace ml::imaging {

/// Which channel a pixel's first byte is.
enum class PixelOrder { Rgb, Bgr };

/// An image in memory, top row first, three interleaved samples a pixel. A row has `stride` pixels, of which
/// the first `width` show; stride equals width (no padding) unless it was rounded up for a display, then to
/// the next multiple of 4. Two-byte samples are 0..65535 in host order.
struct PixelBuffer {
  int width = 0;
  int height = 0;
  int stride = 0;
  PixelOrder order = PixelOrder::Rgb;
  int bytesPerSample = 1;
  std::vector<std::byte> data;

  bool Empty() const { return data.empty(); }
  std::size_t RowBytes() const {
    return static_cast<std::size_t>(stride) * 3 * static_cast<std::size_t>(bytesPerSample);
  }
  std::byte* Row(int y) { return data.data() + static_cast<std::size_t>(y) * RowBytes(); }
  const std::byte* Row(int y) const { return data.data() + static_cast<std::size_t>(y) * RowBytes(); }
};

/// A buffer of zeros without padding.
inline PixelBuffer MakePixelBuffer(int width, int height, PixelOrder order = PixelOrder::Rgb, int bytesPerSample = 1) {
  PixelBuffer buffer{width, height, width, order, bytesPerSample, {}};
  buffer.data.resize(buffer.RowBytes() * static_cast<std::size_t>(height));
  return buffer;
}

/// Limits against files that promise too much, in pixels: where a decoder scales while decoding, and where
/// the whole image must be held.
inline constexpr long long kMaxPixelsScaled = 500'000'000;
inline constexpr long long kMaxPixelsWhole = 100'000'000;

/// How a picture is to be turned, clockwise. The numbers are those of the lossless JPEG transforms.
enum class Turn { None = 0, cw90 = 5, half = 6, cw270 = 7 };

}  // namespace ml::imaging
