#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// A picture to be written, top row first, interleaved samples. Owns nothing.
struct PixelRows {
  int width = 0;
  int height = 0;
  int channels = 3;        ///< 1 grey, 3 colours
  int bytesPerSample = 1;  ///< 1, or 2 in host order
  PixelOrder order = PixelOrder::Rgb;
  std::size_t stride = 0;  ///< bytes from row to row
  const std::byte* data = nullptr;

  PixelRows() = default;
  /// Not explicit: every writer takes a buffer.
  PixelRows(const PixelBuffer& buffer)  // NOLINT(google-explicit-constructor)
      : width(buffer.width),
        height(buffer.height),
        bytesPerSample(buffer.bytesPerSample),
        order(buffer.order),
        stride(buffer.RowBytes()),
        data(buffer.data.data()) {}

  std::size_t PixelBytes() const {
    return static_cast<std::size_t>(channels) * static_cast<std::size_t>(bytesPerSample);
  }
  std::size_t RowBytes() const { return static_cast<std::size_t>(width) * PixelBytes(); }
  const std::byte* Row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

}  // namespace ml::imaging
