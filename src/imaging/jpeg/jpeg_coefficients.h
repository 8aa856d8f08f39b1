#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "imaging/jpeg/jpeg_transform.h"

namespace ml::imaging {

/// TransformJpeg for pictures whose channels are sampled in a way that the library's own transform does not know: the
/// blocks of coefficients are moved one by one. Throws LibraryError as it does.
std::vector<std::byte> TransformCoefficients(std::span<const std::byte> jpeg, JpegTransform transform);

}  // namespace ml::imaging
