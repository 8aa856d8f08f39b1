#include "imaging/tiff/tiff_samples.h"

#include <algorithm>
#include <cstring>

namespace ml::imaging {
namespace {

/// Where a pixel of the result comes from.
struct Source {
  std::uint32_t x = 0, y = 0;
};

Source SourceOf(const TiffSamples& source, Turn turn, std::uint32_t x, std::uint32_t y) {
  switch (turn) {
    case Turn::cw90:
      return {y, source.height - 1 - x};
    case Turn::half:
      return {source.width - 1 - x, source.height - 1 - y};
    case Turn::cw270:
      return {source.width - 1 - y, x};
    default:
      return {x, y};
  }
}

void CopyBytes(const TiffSamples& source, TiffSamples& result, Turn turn) {
  const auto size = source.BitsPerPixel() / 8;
  const auto sourceRow = source.RowBytes();
  auto* out = result.data.data();
  for (std::uint32_t y = 0; y < result.height; ++y) {
    for (std::uint32_t x = 0; x < result.width; ++x, out += size) {
      const auto from = SourceOf(source, turn, x, y);
      std::memcpy(out, source.data.data() + from.y * sourceRow + from.x * size, size);
    }
  }
}

/// Bits are counted from the highest of the first byte on.
unsigned BitAt(const std::byte* row, std::size_t bit) {
  return std::to_integer<unsigned>(row[bit / 8]) >> (7 - bit % 8) & 1;
}

void CopyBits(const TiffSamples& source, TiffSamples& result, Turn turn) {
  const auto size = source.BitsPerPixel();
  for (std::uint32_t y = 0; y < result.height; ++y) {
    auto* row = result.data.data() + y * result.RowBytes();
    for (std::uint32_t x = 0; x < result.width; ++x) {
      const auto from = SourceOf(source, turn, x, y);
      const auto* fromRow = source.data.data() + from.y * source.RowBytes();
      for (std::size_t i = 0; i < size; ++i) {
        const auto bit = x * size + i;
        row[bit / 8] |= static_cast<std::byte>(BitAt(fromRow, from.x * size + i) << (7 - bit % 8));
      }
    }
  }
}

}  // namespace

TiffSamples Turned(const TiffSamples& source, Turn turn) {
  TiffSamples result{source.width, source.height, source.samplesPerPixel, source.bitsPerSample};
  if (turn == Turn::cw90 || turn == Turn::cw270) std::swap(result.width, result.height);
  result.data.resize(result.RowBytes() * result.height);
  source.bitsPerSample % 8 == 0 ? CopyBytes(source, result, turn) : CopyBits(source, result, turn);
  return result;
}

void SwapSampleBytes(TiffSamples& samples) {
  const auto size = static_cast<std::ptrdiff_t>(samples.bitsPerSample / 8);
  if (size < 2) return;
  const auto end = samples.data.end();
  for (auto at = samples.data.begin(); end - at >= size; at += size) std::reverse(at, at + size);
}

}  // namespace ml::imaging
