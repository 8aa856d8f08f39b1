#pragma once

#include <array>
#include <cstdint>

namespace ml::imagefiles {

/// Counts of a displayed image. `combined` counts all three channel values and their integer mean, so four a pixel.
struct Histogram {
  std::uint32_t pixelCount = 0;
  std::array<std::int32_t, 256> red{}, green{}, blue{}, combined{};

  void Add(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    ++pixelCount;
    ++red[r], ++green[g], ++blue[b];
    ++combined[r], ++combined[g], ++combined[b];
    ++combined[static_cast<std::size_t>((r + g + b) / 3)];
  }
};

}  // namespace ml::imagefiles
