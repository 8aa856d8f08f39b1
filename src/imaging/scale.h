#pragma once

#include <vector>

#include "imaging/pixel_buffer.h"

/// Changes of size, direction and layout that need no library. All take and give 8-bit pictures, unless told otherwise.
namespace ml::imaging {

/// Which of `source` places each of `target` (at most `source`) places takes: one is taken, then the source
/// moves on by one and by as many more as an accumulator, raised by source - target and lowered by target,
/// stays above 0.
std::vector<int> NearestSteps(int source, int target);

/// `source` reduced to the mean of the area under each pixel; width and height are 1 up to the source's.
PixelBuffer ScaleAverage(const PixelBuffer& source, int width, int height);

/// A turned copy without padding; of one or two bytes a sample.
PixelBuffer Turned(const PixelBuffer& source, Turn turn);

/// Blue-green-red with rows padded to a multiple of four pixels, as a display takes it.
PixelBuffer ToDisplayLayout(const PixelBuffer& source);

/// A picture of two-byte samples reduced to the high byte of each; one of single bytes as it is.
PixelBuffer HighBytes(PixelBuffer source);

constexpr int PaddedWidth(int width) { return (width + 3) / 4 * 4; }

}  // namespace ml::imaging
