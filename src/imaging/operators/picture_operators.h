#pragma once

#include "imaging/magick/magick_image.h"
#include "imaging/pixel_buffer.h"

/// Changes of a picture that the imaging library works out. One that it cannot do leaves the picture as it is.
namespace ml::imaging {

/// 100 leaves colours as they are, 0 makes them grey.
bool ApplySaturation(MagickImage& image, double percent);

/// 1 leaves it as it is, more makes the midtones lighter.
bool ApplyGamma(MagickImage& image, double gamma);

/// Which edge rows of the sharpened picture are taken: its frame shows artefacts of the mask. The first row and both
/// outer columns stay as they were in any case.
enum class LastRow { Sharpened, StaysAsItWas };

/// Sharpens `buffer`, which holds the pixels of `image`.
bool ApplyUnsharpMask(MagickImage& image, PixelBuffer& buffer, const UnsharpMask& mask, LastRow lastRow);

}  // namespace ml::imaging
