#include "imagefiles/histogram_curves.h"

#include <algorithm>

namespace ml::imagefiles {
namespace {

constexpr std::int64_t kTallest = 100;

std::optional<HistogramCurves::Heights> HeightsOf(const std::array<std::int32_t, 256>& table, std::int32_t peak,
                                                  bool wanted) {
  if (!wanted || peak == 0) return std::nullopt;
  HistogramCurves::Heights heights{};
  std::ranges::transform(table, heights.begin(),
                         [&](std::int32_t entry) { return static_cast<int>(entry * kTallest / peak + 1); });
  return heights;
}

}  // namespace

HistogramCurves MakeHistogramCurves(const NormalisedHistogram& histogram, const HistogramChannels& wanted) {
  const auto scale = std::max({histogram.redPeak, histogram.greenPeak, histogram.bluePeak});
  HistogramCurves curves{.red = HeightsOf(histogram.red, scale, wanted.red),
                         .green = HeightsOf(histogram.green, scale, wanted.green),
                         .blue = HeightsOf(histogram.blue, scale, wanted.blue),
                         .intensity = HeightsOf(histogram.combined, histogram.combinedPeak, wanted.intensity)};
  if (curves.intensity) curves.intensity->front() = 0;
  return curves;
}

}  // namespace ml::imagefiles
