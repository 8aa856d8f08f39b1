#pragma once

#include <vector>

#include "imaging/jp2/jp2_reader.h"
#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// The picture that the components make, as large as the largest of them. Without a colour space three components
/// are red, green and blue, or luma and colour differences if the second is smaller than the first. `components`:
/// at least one.
PixelBuffer CombineComponents(const std::vector<Jp2Component>& components, Jp2Colours colours);

}  // namespace ml::imaging
