#pragma once

#include <array>
#include <optional>
#include <vector>

#include "imaging/pixel_buffer.h"
#include "rawconvert/look/colour_steps.h"
#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// What the sensor saw in equal cells of the picture, row by row: the mean of each colour, 0 to 1 for its limit.
struct SensorGrid {
  int columns = 0, rows = 0;
  std::vector<std::array<double, 3>> cells;
};

/// The white balance under which the camera made its own picture of the same frame, `preview`, 8-bit and at least as
/// large as the grid: for cameras that do not record what they found. Nothing if the two have too little in common.
std::optional<WhiteBalanceCoefficients> BalanceOfPreview(const SensorGrid& grid, const imaging::PixelBuffer& preview,
                                                         const SensorMatrix& toSrgb);

}  // namespace ml::rawconvert
