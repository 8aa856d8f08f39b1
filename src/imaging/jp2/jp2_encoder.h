#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "imaging/writers/pixel_rows.h"

namespace ml::imaging {

/// Of the uncompressed size, how much a picture of this quality, 0..100, may take: 0.01..1. At 1 nothing is lost.
double RateOf(int quality);

/// The picture as a JPEG 2000 code stream, of 8 or 16 bits a sample, cut into tiles so that little more than one of
/// them is in work at a time. Uses up to `threads` threads. `report` is told how many of all tiles are done, and may
/// throw. Throws LibraryError, whose reason is the sentence for the user.
std::vector<std::byte> EncodeJp2CodeStream(const PixelRows& pixels, double rate, int threads,
                                           const std::function<void(int done, int all)>& report);

}  // namespace ml::imaging
