#pragma once

#include <cstddef>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// The picture, of single-byte samples, as a JPEG stream that holds nothing but what decoding needs, as thumbnails in
/// EXIF data are written. `quality` is 0..100. Throws LibraryError.
std::vector<std::byte> EncodeBareJpeg(const PixelBuffer& picture, int quality);

}  // namespace ml::imaging
