#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "imaging/jpeg/jpeg_transform.h"

namespace ml::imaging {

/// TransformJpeg for pictures that the library's own transform refuses: those whose channels are sampled in a way that
/// it does not know, and those with irregularities that cost no pixel. The blocks of coefficients are moved one by one.
/// Throws LibraryError as it does.
std::vector<std::byte> TransformCoefficients(std::span<const std::byte> jpeg, JpegTransform transform);

}  // namespace ml::imaging
