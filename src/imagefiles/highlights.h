#pragma once

#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// What counts as a blown highlight; the numbers are those of "HighlightBlinkMethod".
enum class HighlightMethod { Luminosity = 0, RgbValue = 1 };

struct HighlightOptions {
  HighlightMethod method = HighlightMethod::Luminosity;
  int threshold = 250;  ///< 0..255; a pixel that reaches it is blown
  bool operator==(const HighlightOptions&) const = default;
};

/// A copy of an 8-bit picture in blue, green, red order with its blown pixels black. By RgbValue one channel is
/// enough. By Luminosity a pixel is measured by its green and by the blue of its right neighbour, which is 0 behind the
/// end of a row.
imaging::PixelBuffer BlackOutHighlights(const imaging::PixelBuffer& picture, const HighlightOptions& options);

}  // namespace ml::imagefiles
