#pragma once

#include <stop_token>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// HQ style sharpening, in place: what luma has in fine detail is raised by `amount` percent (0..100) of twice itself,
/// the faintest detail less, and no pixel gets much lighter or darker than its neighbours were, so that edges get no
/// halos. Colours stay. Rows without padding, one or two bytes a sample. Throws Cancelled, the picture then being half
/// changed.
void ApplyHqSharpen(PixelBuffer& pixels, int amount, const std::stop_token& stop = {});

}  // namespace ml::imaging
