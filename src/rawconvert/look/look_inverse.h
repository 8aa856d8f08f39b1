#pragma once

#include <array>
#include <optional>

#include "rawconvert/look/colour_steps.h"

namespace ml::rawconvert {

/// Nothing if the matrix has no inverse.
std::optional<Matrix3> Inverse(const Matrix3& matrix);

/// Takes a colour of the camera's own picture, 0..1, back to what the sensor saw, white balanced; up to a common
/// factor. For sensors of three colours.
class LookInverse {
 public:
  /// `toSrgb` as for LightMatrix; throws nothing, but is not Usable() if there is no way back.
  explicit LookInverse(const SensorMatrix& toSrgb);
  bool Usable() const { return sensorOfLight_.has_value(); }
  std::array<double, 3> SensorOf(const std::array<double, 3>& shown) const;

 private:
  std::optional<Matrix3> sensorOfLight_, behindCurve_;
  std::array<double, 1024> lightOf_{};  ///< of samples in front of the curve, in equal steps
};

}  // namespace ml::rawconvert
