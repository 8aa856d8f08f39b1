#pragma once

#include <array>
#include <optional>

#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// What is asked for, and what goes with some of the codes.
struct WhiteBalanceChoice {
  int code = kAsShot;  ///< of the white balance table; -1 the coefficients if they are known, else the point
  int kelvin = 5800;   ///< for code 9
  WhitePoint point = {};
  WhiteBalanceCoefficients coefficients = {};
};

/// What a file tells.
struct WhiteBalanceFacts {
  WhiteBalanceCoefficients asShot;                      ///< may be unknown
  std::array<WhiteBalanceCoefficients, 256> presets{};  ///< the camera's own, by EXIF's numbers of light sources
  std::array<std::array<double, 3>, 4> sensorOfXyz{};  ///< what each colour of the sensor sees of X, Y and Z; 0 unknown
  int colours = 3;
};

/// The multipliers for a choice; nothing where they have to be measured in the picture.
std::optional<WhiteBalanceCoefficients> MultipliersFor(const WhiteBalanceChoice& choice,
                                                       const WhiteBalanceFacts& facts);
/// For light of a colour temperature: black bodies up to 4000 K, daylight from 5000 K on. Unknown for a sensor of
/// unknown colours.
WhiteBalanceCoefficients MultipliersOfKelvin(int kelvin, const WhiteBalanceFacts& facts);

}  // namespace ml::rawconvert
