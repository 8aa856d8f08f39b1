#include "rawconvert/look/colour_steps.h"

#include <cmath>
#include <numbers>

namespace ml::rawconvert {
namespace {

/// What the cameras' own pictures do to colours before and behind the tone curve, which see: the rows add up to 1, so
/// that grey stays grey.
constexpr Matrix3 kCameraLight = {{{0.821F, 0.149F, 0.030F}, {-0.001F, 0.880F, 0.121F}, {0.022F, 0.139F, 0.839F}}};
constexpr Matrix3 kCameraShown = {{{1.095F, -0.142F, 0.047F}, {-0.207F, 1.194F, 0.013F}, {-0.213F, -0.238F, 1.451F}}};
/// Of sRGB light, both with the white of daylight at 6500 K.
constexpr Matrix3 kToAdobeRgb = {{{0.7152F, 0.2848F, 0.0F}, {0.0F, 1.0F, 0.0F}, {0.0F, 0.0412F, 0.9588F}}};

constexpr std::array kLuma = {0.299F, 0.587F, 0.114F};
constexpr std::array kSepia = {1.08F, 0.98F, 0.80F};
/// Colour differences grow or shrink by this a level, and turn by this many degrees a level of tone.
constexpr float kSaturationStep = 0.12F;
constexpr double kToneStep = 2.5;

/// Of the EOS cameras, whose own pictures leave more room above white; fitted with the tone curve.
constexpr float kEosGain = 0.803F;

Matrix3 GreyMatrix(const std::array<float, 3>& tint) {
  Matrix3 matrix{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) matrix[row][column] = tint[row] * kLuma[column];
  }
  return matrix;
}

/// Luma stays; the two colour differences are stretched and turned together.
Matrix3 ChromaMatrix(double saturation, double tone) {
  const double angle = tone * kToneStep * std::numbers::pi / 180, factor = 1 + saturation * kSaturationStep;
  const auto along = static_cast<float>(factor * std::cos(angle)),
             across = static_cast<float>(factor * std::sin(angle));
  constexpr Matrix3 toDifferences = {
      {{0.299F, 0.587F, 0.114F}, {-0.168736F, -0.331264F, 0.5F}, {0.5F, -0.418688F, -0.081312F}}};
  constexpr Matrix3 fromDifferences = {{{1, 0, 1.402F}, {1, -0.344136F, -0.714136F}, {1, 1.772F, 0}}};
  const Matrix3 turn = {{{1, 0, 0}, {0, along, -across}, {0, across, along}}};
  return fromDifferences * (turn * toDifferences);
}

}  // namespace

Matrix3 operator*(const Matrix3& a, const Matrix3& b) {
  Matrix3 product{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      for (std::size_t k = 0; k < 3; ++k) product[row][column] += a[row][k] * b[k][column];
    }
  }
  return product;
}

SensorMatrix LightMatrix(const SensorMatrix& toSrgb, const PictureLook& look) {
  Matrix3 step = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  if (!look.linear) step = kCameraLight;
  if (look.space == PictureLook::Space::AdobeRgb) step = kToAdobeRgb * step;
  SensorMatrix result{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      for (std::size_t k = 0; k < 3; ++k) result[row][column] += step[row][k] * toSrgb[k][column];
    }
  }
  return result;
}

Matrix3 ShownMatrix(const PictureLook& look) {
  if (look.colours == PictureLook::Colours::Grey) return GreyMatrix({1, 1, 1});
  if (look.colours == PictureLook::Colours::Sepia) return GreyMatrix(kSepia);
  return ChromaMatrix(look.saturation, look.tone) * kCameraShown;
}

float CameraGain(const std::string& model) { return model.find("EOS") != std::string::npos ? kEosGain : 1; }

}  // namespace ml::rawconvert
