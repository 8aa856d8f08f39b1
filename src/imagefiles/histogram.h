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

/// Counts made ready to be drawn, and the largest entry of each table.
struct NormalisedHistogram {
  std::array<std::int32_t, 256> red{}, green{}, blue{}, combined{};
  std::int32_t redPeak = 0, greenPeak = 0, bluePeak = 0, combinedPeak = 0;
};

/// Brings `combined` to one count a pixel and cuts every entry at a fiftieth of the pixels, so that a spike of pure
/// black or white does not flatten the rest. All is zero for an image of fewer than 50 pixels.
NormalisedHistogram Normalise(const Histogram& counts);

}  // namespace ml::imagefiles
