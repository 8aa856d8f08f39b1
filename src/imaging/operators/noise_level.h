#pragma once

#include <array>

#include "imaging/operators/colour_difference.h"
#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// Variance of the noise of luma and of each colour difference in flat parts of a picture, by luma: 16 steps, the
/// scale of samples being 0..1. Noise differs between shadows and highlights.
struct NoiseLevel {
  static constexpr int kSteps = 16;
  std::array<ColourDifference, kSteps> variance{};

  /// Between the steps it is interpolated.
  ColourDifference At(float luma) const;
};

/// Measures it in the flattest squares of each luma; a picture that has none gives what is least restless in it.
NoiseLevel MeasureNoise(const PixelBuffer& pixels);

}  // namespace ml::imaging
