#pragma once

#include <cstddef>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// Of all PNG files made here: fast and nearly as small as more work would make photographs.
inline constexpr int kPngCompressionLevel = 3;

enum class PngColour { Rgb, Grey };

/// `picture` (8-bit, not empty, either order) as a PNG file; Grey writes one channel, the first of each pixel,
/// for pictures whose channels are equal. Throws LibraryError.
std::vector<std::byte> EncodePng(const PixelBuffer& picture, PngColour colour);

}  // namespace ml::imaging
