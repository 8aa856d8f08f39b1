#include "rawconvert/look/look_inverse.h"

#include <algorithm>
#include <cmath>

#include "rawconvert/look/tone_curve.h"

namespace ml::rawconvert {
namespace {

std::array<double, 3> Apply(const Matrix3& m, const std::array<double, 3>& v) {
  std::array<double, 3> result{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t k = 0; k < 3; ++k) result[row] += static_cast<double>(m[row][k]) * v[k];
  }
  return result;
}

}  // namespace

std::optional<Matrix3> Inverse(const Matrix3& m) {
  const auto minor = [&](std::size_t row, std::size_t column) {
    const std::size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
    return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
  };
  const float determinant = m[0][0] * minor(0, 0) + m[0][1] * minor(0, 1) + m[0][2] * minor(0, 2);
  if (std::abs(determinant) < 1e-6F) return std::nullopt;
  Matrix3 inverse{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) inverse[row][column] = minor(column, row) / determinant;
  }
  return inverse;
}

LookInverse::LookInverse(const SensorMatrix& toSrgb) {
  const auto curve = MakeToneCurve(0);
  for (std::size_t i = 0; i < lightOf_.size(); ++i) {
    const auto sample = static_cast<std::uint16_t>(i * 65535 / (lightOf_.size() - 1));
    lightOf_[i] = static_cast<double>(std::ranges::lower_bound(curve, sample) - curve.begin()) / kCurveSteps;
  }
  const auto light = LightMatrix(toSrgb, {});
  Matrix3 square{};
  for (std::size_t row = 0; row < 3; ++row) std::copy_n(light[row].begin(), 3, square[row].begin());
  behindCurve_ = Inverse(ShownMatrix({}));
  if (behindCurve_) sensorOfLight_ = Inverse(square);
}

std::array<double, 3> LookInverse::SensorOf(const std::array<double, 3>& shown) const {
  auto light = Apply(*behindCurve_, shown);
  for (auto& value : light) {
    value = lightOf_[static_cast<std::size_t>(std::clamp(value, 0.0, 1.0) * static_cast<double>(lightOf_.size() - 1))];
  }
  return Apply(*sensorOfLight_, light);
}

}  // namespace ml::rawconvert
