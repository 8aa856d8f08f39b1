#pragma once

#include <algorithm>
#include <cstdint>

/// Luma and colour differences of pixels, all on the scale 0..1 of the samples' range.
namespace ml::imaging {

struct ColourDifference {
  float y, cb, cr;
};

/// The sample range of a type: 255 or 65535.
template <class Sample>
inline constexpr float kSampleRange = static_cast<float>(static_cast<Sample>(-1));

template <class Sample>
ColourDifference DifferenceOf(const Sample* pixel) {
  constexpr float kScale = 1 / kSampleRange<Sample>;
  const float r = static_cast<float>(pixel[0]) * kScale, g = static_cast<float>(pixel[1]) * kScale,
              b = static_cast<float>(pixel[2]) * kScale;
  const float y = 0.299F * r + 0.587F * g + 0.114F * b;
  return {y, b - y, r - y};
}

/// The inverse, rounded and cut to the range.
template <class Sample>
void SetPixel(Sample* pixel, const ColourDifference& colour) {
  const auto sample = [](float value) {
    return static_cast<Sample>(std::clamp(value * kSampleRange<Sample> + 0.5F, 0.0F, kSampleRange<Sample>));
  };
  const float r = colour.y + colour.cr, b = colour.y + colour.cb;
  pixel[0] = sample(r);
  pixel[1] = sample((colour.y - 0.299F * r - 0.114F * b) / 0.587F);
  pixel[2] = sample(b);
}

}  // namespace ml::imaging
