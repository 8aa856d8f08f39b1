#include "rawconvert/look/tone_curve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ml::rawconvert {
namespace {

/// The curve of the cameras' own pictures, at equal steps of the square root of light. Fitted, together with the
/// matrices of colour_steps.cpp, to the pictures that PowerShot G2, PowerShot S40 and EOS D30 put into their raw files.
constexpr std::array kKnots = {0.0,    0.0439, 0.1439, 0.2772, 0.4120, 0.5333, 0.6487,
                               0.7387, 0.8218, 0.8880, 0.9378, 0.9650, 1.0};
constexpr std::size_t kPieces = kKnots.size() - 1;
/// Each level of contrast adds this share of the steepest parabola pair about the middle.
constexpr double kContrastStep = 0.15, kMiddle = 0.45;

/// Slopes that keep the curve rising between knots: the harmonic mean of both sides, the ends as they are.
std::array<double, kKnots.size()> Slopes() {
  std::array<double, kKnots.size()> slopes{};
  for (std::size_t i = 1; i < kPieces; ++i) {
    const double before = kKnots[i] - kKnots[i - 1], after = kKnots[i + 1] - kKnots[i];
    slopes[i] = 2 * before * after / (before + after);
  }
  slopes.front() = kKnots[1] - kKnots[0];
  slopes.back() = kKnots[kPieces] - kKnots[kPieces - 1];
  return slopes;
}

/// `at` is 0..kPieces.
double Between(double at, const std::array<double, kKnots.size()>& slopes) {
  const auto i = std::min(static_cast<std::size_t>(at), kPieces - 1);
  const double t = at - static_cast<double>(i), s = 1 - t;
  return kKnots[i] * (1 + 2 * t) * s * s + slopes[i] * t * s * s + kKnots[i + 1] * t * t * (3 - 2 * t) -
         slopes[i + 1] * t * t * s;
}

}  // namespace

std::vector<std::uint16_t> MakeToneCurve(double contrast) {
  const auto slopes = Slopes();
  std::vector<std::uint16_t> curve(kCurveSteps);
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const double light = static_cast<double>(i) / (kCurveSteps - 1);
    const double y = Between(std::sqrt(light) * kPieces, slopes);
    const double steeper = y + contrast * kContrastStep * 4 * y * (1 - y) * (y - kMiddle);
    curve[i] = static_cast<std::uint16_t>(std::lround(std::clamp(steeper, 0.0, 1.0) * 65535));
  }
  return curve;
}

}  // namespace ml::rawconvert
