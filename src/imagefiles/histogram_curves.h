#pragma once

#include <array>
#include <optional>

#include "imagefiles/histogram.h"

namespace ml::imagefiles {

/// Which curves are wanted.
struct HistogramChannels {
  bool red = true, green = true, blue = true, intensity = true;
  bool operator==(const HistogramChannels&) const = default;
};

/// What a picture of a histogram shows: heights above the axis, one a level, 1..101. A curve that is not wanted, or
/// has nothing to show, is absent. The three colours share one scale; the intensity has its own and stands as bars
/// over the levels from 1 on, with 0 for level 0.
struct HistogramCurves {
  using Heights = std::array<int, 256>;
  std::optional<Heights> red, green, blue, intensity;
  bool operator==(const HistogramCurves&) const = default;
};

HistogramCurves MakeHistogramCurves(const NormalisedHistogram& histogram, const HistogramChannels& wanted);

}  // namespace ml::imagefiles
