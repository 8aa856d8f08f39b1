#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// The pixels of one picture of a TIFF file as they are stored but for the compression: top row first, each row filled
/// up to a whole byte, the samples of a pixel together, samples of several bytes in the byte order of this machine.
struct TiffSamples {
  std::uint32_t width = 0, height = 0;
  std::uint32_t samplesPerPixel = 1, bitsPerSample = 8;  ///< bits: 1, 2, 4, 8, 16, 32 or 64
  std::vector<std::byte> data{};

  std::size_t BitsPerPixel() const { return std::size_t{samplesPerPixel} * bitsPerSample; }
  std::size_t RowBytes() const { return (width * BitsPerPixel() + 7) / 8; }
};

/// The samples turned; they must not be empty.
TiffSamples Turned(const TiffSamples& source, Turn turn);

/// Swaps the bytes of each sample.
void SwapSampleBytes(TiffSamples& samples);

}  // namespace ml::imaging
