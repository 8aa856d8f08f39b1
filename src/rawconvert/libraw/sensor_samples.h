#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "rawconvert/libraw/preview_balance.h"
#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// The sensor's samples as they were recorded, one a pixel. Does not own them. Places count from the shown picture's
/// corner; those around it, up to the sensor's edge, can be asked for too.
struct SensorSamples {
  const std::uint16_t* first = nullptr;  ///< of the shown picture
  std::size_t pitch = 0;                 ///< samples from row to row
  int width = 0, height = 0;             ///< of the shown picture
  int oddRow = 0, oddColumn = 0;         ///< 1 where the pattern is one step further at the corner
  std::uint32_t pattern = 0;             ///< two bits a place, eight rows of two columns; 0 red, 1 and 3 green, 2 blue
  std::array<double, 4> black{};
  double white = 65535;  ///< the sensor's limit, above black

  std::size_t ColourAt(int x, int y) const {
    const int row = y + oddRow, column = x + oddColumn;
    return pattern >> (((row << 1 & 14) + (column & 1)) << 1) & 3U;
  }
  /// Above black.
  double At(int x, int y) const;
};

/// The multipliers that make the surroundings of a point grey; nothing where they are black.
std::optional<WhiteBalanceCoefficients> MakeGrey(const SensorSamples& samples, WhitePoint point);

/// For sensors of red, green and blue.
SensorGrid MakeGrid(const SensorSamples& samples, int columns, int rows);

}  // namespace ml::rawconvert
