#include "imagefiles/histogram.h"

#include <algorithm>

namespace ml::imagefiles {
namespace {

using Table = std::array<std::int32_t, 256>;

constexpr std::uint32_t kPixelsPerLimit = 50;
constexpr std::int32_t kCombinedCountsPerPixel = 4;

/// The largest entry left.
std::int32_t CutAt(std::int32_t limit, Table& table) {
  for (auto& entry : table) entry = std::min(entry, limit);
  return *std::ranges::max_element(table);
}

}  // namespace

NormalisedHistogram Normalise(const Histogram& counts) {
  NormalisedHistogram result{
      .red = counts.red, .green = counts.green, .blue = counts.blue, .combined = counts.combined};
  for (auto& entry : result.combined) entry /= kCombinedCountsPerPixel;
  const auto limit = static_cast<std::int32_t>(counts.pixelCount / kPixelsPerLimit);
  result.redPeak = CutAt(limit, result.red);
  result.greenPeak = CutAt(limit, result.green);
  result.bluePeak = CutAt(limit, result.blue);
  result.combinedPeak = CutAt(limit, result.combined);
  return result;
}

}  // namespace ml::imagefiles
