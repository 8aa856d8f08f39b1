#pragma once

#include <cstddef>
#include <vector>

#include "imaging/writers/pixel_rows.h"

namespace ml::imaging {

/// Of the uncompressed size, how much a picture of this quality, 0..100, may take: 0.01..1. At 1 nothing is lost.
double RateOf(int quality);

/// The picture as a JPEG 2000 code stream, of 8 or 16 bits a sample. Uses up to `threads` threads. Throws LibraryError,
/// with a description of nothing where there was no image to begin with.
std::vector<std::byte> EncodeJp2CodeStream(const PixelRows& pixels, double rate, int threads);

}  // namespace ml::imaging
