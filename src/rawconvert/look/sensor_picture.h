#pragma once

#include <cstddef>
#include <cstdint>

namespace ml::rawconvert {

/// A picture whose pixels have all colours of the sensor, white balanced: four samples of 16 bits a pixel, of which
/// `colours` count, 65535 being the sensor's limit. Does not own them. The part to be shown begins at `left`, `top`.
struct SensorPicture {
  const std::uint16_t* samples = nullptr;
  int width = 0, height = 0;
  int colours = 3;
  int left = 0, top = 0;
  int shownWidth = 0, shownHeight = 0;

  const std::uint16_t* Pixel(int x, int y) const {
    return samples + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
  }
};

}  // namespace ml::rawconvert
