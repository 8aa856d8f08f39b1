#pragma once

#include <array>
#include <string>

#include "rawconvert/look/picture_look.h"

namespace ml::rawconvert {

using Matrix3 = std::array<std::array<float, 3>, 3>;
/// Three rows over the sensor's three or four colours; unused columns are 0.
using SensorMatrix = std::array<std::array<float, 4>, 3>;

Matrix3 operator*(const Matrix3& a, const Matrix3& b);

/// From the sensor's colours, white balanced, to red, green and blue light of the picture's colour space. `toSrgb`
/// comes from the camera's measured colours.
SensorMatrix LightMatrix(const SensorMatrix& toSrgb, const PictureLook& look);
/// For the samples behind the tone curve; grey stays grey except for sepia.
Matrix3 ShownMatrix(const PictureLook& look);
/// By what the camera's own pictures are brighter than the sensor's limit as white tells.
float CameraGain(const std::string& model);

}  // namespace ml::rawconvert
