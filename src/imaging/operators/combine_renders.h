#pragma once

#include <stop_token>
#include <string_view>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// Takes the highlights of `normal` from `linear`, a linear render of the same shot and size which holds detail where
/// the other one is clipped; tonality stays that of `normal`. Both have two bytes a sample, no padding, red first.
/// `linear` is given a display tone on the way. Throws LibraryError, and Cancelled with `normal` half changed.
void CombineRenders(PixelBuffer& normal, PixelBuffer& linear, std::string_view model, const std::stop_token& stop = {});

}  // namespace ml::imaging
