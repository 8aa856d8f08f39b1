#pragma once

#include <algorithm>
#include <array>

namespace ml::rawconvert {

/// Red, green and blue, 0..4095, of a sensor with green, magenta, cyan and yellow sites: their mean as brightness, and
/// as colour how far those which see red, and those which see blue, are above the others.
inline std::array<int, 3> RgbOfFourColours(const std::array<int, 4>& sites) {
  const auto [green, magenta, cyan, yellow] = sites;
  const double brightness = (green + magenta + cyan + yellow) / 4.0;
  const double blue = (magenta + cyan - green - yellow) / 4.0;
  const double red = (magenta + yellow - green - cyan) / 4.0;
  const auto bounded = [](double value) { return std::clamp(static_cast<int>(value + 0.5), 0, 4095); };
  return {bounded(brightness + 1.402 * red), bounded(brightness - 0.34414 * blue - 0.71414 * red),
          bounded(brightness + 1.772 * blue)};
}

}  // namespace ml::rawconvert
