#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// How many pixels have each luma, by the high byte where samples have two bytes.
using LumaHistogram = std::array<std::uint32_t, 256>;

/// Luma is 0.299 R + 0.587 G + 0.114 B, cut to a whole number.
LumaHistogram HistogramLuma(const PixelBuffer& pixels);

/// Share of the pixels, in percent, that may be clipped.
struct ClippedPercent {
  double black = 0, white = 0;
};

/// When the search for black stops: with as many pixels passed as may be clipped, or with more. The second also moves
/// black up to the first luma that occurs where nothing may be clipped.
enum class BlackScan { Below, AtMost };

/// 0..255. Black is in the lower half; white is never below black.
struct LevelPoints {
  int low = 0, high = 255;
  bool operator==(const LevelPoints&) const = default;
};

LevelPoints AutoLevelsPoints(const LumaHistogram& histogram, std::int64_t pixelCount, const ClippedPercent& clipped,
                             BlackScan scan = BlackScan::Below);

/// Of MagickImage::Level for what was found, and for points that a user chose.
std::string AutoLevelsText(const LevelPoints& points);
std::string ManualLevelsText(const LevelPoints& points, double mid);

}  // namespace ml::imaging
