#pragma once

#include <stop_token>

#include "imaging/pixel_buffer.h"

namespace ml::rawconvert {

/// A picture of two bytes a sample in another size, no smaller than its own, weighed by the Mitchell filter. Throws
/// platform::Cancelled on a stop request.
imaging::PixelBuffer ResizeMitchell(const imaging::PixelBuffer& picture, int width, int height,
                                    const std::stop_token& stop = {});

}  // namespace ml::rawconvert
