#include "rawconvert/libraw/white_balance.h"

#include <gtest/gtest.h>

#include "rawconvert/libraw/preview_balance.h"
#include "rawconvert/libraw/sensor_samples.h"
#include "rawconvert/look/look_inverse.h"

namespace ml::rawconvert {
namespace {

/// A sensor that sees red, green and blue light as a display gives it, and some presets.
WhiteBalanceFacts Facts() {
  WhiteBalanceFacts facts;
  facts.sensorOfXyz = {{{3.2405, -1.5371, -0.4985}, {-0.9693, 1.8760, 0.0416}, {0.0556, -0.2040, 1.0572}, {}}};
  facts.asShot = {{1.5F, 1, 1.4F, 1}};
  facts.presets[1] = {{2, 1, 1.2F, 1}};
  facts.presets[17] = {{1.2F, 1, 2.2F, 1}};
  facts.presets[90] = {{1.7F, 1, 1.7F, 1}};
  return facts;
}

TEST(WhiteBalance, ChoosesTheCamerasOwnNumbersFirst) {
  auto none = Facts();
  none.asShot = {};
  struct Case {
    const char* name;
    WhiteBalanceChoice choice;
    WhiteBalanceFacts facts;
    float red;  ///< 0: has to be measured
  };
  const WhiteBalanceCoefficients known{{3, 1, 1, 1}};
  for (const auto& c : std::initializer_list<Case>{{"as shot", {.code = kAsShot}, Facts(), 1.5F},
                                                   {"as shot byte", {.code = 255}, Facts(), 1.5F},
                                                   {"not recorded", {.code = kAsShot}, none, 0},
                                                   {"daylight", {.code = 1}, Facts(), 2},
                                                   {"tungsten by its second number", {.code = 3}, Facts(), 1.2F},
                                                   {"preset", {.code = 6}, Facts(), 1.7F},
                                                   {"auto", {.code = 0}, Facts(), 0},
                                                   {"unknown code", {.code = 77}, Facts(), 1.5F},
                                                   {"point", {.code = -1, .point = {3, 3}}, Facts(), 0},
                                                   {"reuse", {.code = -1, .coefficients = known}, Facts(), 3}}) {
    const auto found = MultipliersFor(c.choice, c.facts);
    EXPECT_EQ(found ? found->multipliers[0] : 0, c.red) << c.name;
  }
  // A preset that the camera did not write is light of its usual temperature.
  EXPECT_EQ(MultipliersFor({.code = 8}, Facts()), MultipliersOfKelvin(7000, Facts()));
}

TEST(WhiteBalance, KelvinMakesLightOfThatTemperatureGrey) {
  const auto day = MultipliersOfKelvin(6504, Facts()).multipliers;
  EXPECT_NEAR(day[0] / day[1], 1, 0.02);  // the white of displays
  EXPECT_NEAR(day[2] / day[1], 1, 0.02);
  float before = 0;
  for (int kelvin = 2800; kelvin <= 10000; kelvin += 100) {
    const auto m = MultipliersOfKelvin(kelvin, Facts()).multipliers;
    const float warmth = m[0] / m[2];
    EXPECT_GT(warmth, before) << kelvin;  // the higher, the warmer the picture
    before = warmth;
  }
  EXPECT_FALSE(MultipliersOfKelvin(5000, WhiteBalanceFacts{}).Known());
}

TEST(WhiteBalance, IsFoundAgainInTheCamerasPicture) {
  const SensorMatrix toSrgb = {{{1.5F, -0.4F, -0.1F, 0}, {0, 1.4F, -0.4F, 0}, {0.1F, -0.4F, 1.3F, 0}}};
  const LookInverse inverse(toSrgb);
  SensorGrid grid{8, 6, {}};
  auto preview = imaging::MakePixelBuffer(32, 24);
  for (int i = 0; i < 48; ++i) {
    const std::array shown = {60 + i, 70 + i * 2, 100 - i};
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 4; ++x) {
        for (int c = 0; c < 3; ++c) {
          preview.Row(i / 8 * 4 + y)[(i % 8 * 4 + x) * 3 + c] =
              static_cast<std::byte>(shown[static_cast<std::size_t>(c)]);
        }
      }
    }
    const auto light = inverse.SensorOf({shown[0] / 255.0, shown[1] / 255.0, shown[2] / 255.0});
    grid.cells.push_back({light[0] / 1.8, light[1], light[2] / 1.3});
  }
  const auto found = BalanceOfPreview(grid, preview, toSrgb);
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->multipliers[0], 1.8, 0.01);
  EXPECT_NEAR(found->multipliers[2], 1.3, 0.01);
  for (auto& cell : grid.cells) cell = {1, 1, 1};
  EXPECT_FALSE(BalanceOfPreview(grid, preview, toSrgb));
}

TEST(WhiteBalance, APointIsMadeGreyWhereverItLies) {
  constexpr int kWidth = 64, kHeight = 48;
  // Red and green in even rows, green and blue in odd ones; black at 32, light 100, 200 and 50 above it.
  std::vector<std::uint16_t> recorded(kWidth * kHeight);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int light = y % 2 == 0 ? (x % 2 == 0 ? 100 : 200) : (x % 2 == 0 ? 200 : 50);
      recorded[static_cast<std::size_t>(y * kWidth + x)] = static_cast<std::uint16_t>(32 + (x < 40 ? light : 0));
    }
  }
  SensorSamples samples{.first = recorded.data() + 3 * kWidth + 1,
                        .pitch = kWidth,
                        .width = kWidth - 4,
                        .height = kHeight - 6,
                        .oddRow = 3,
                        .oddColumn = 1,
                        .pattern = 0xb4b4b4b4,
                        .black = {32, 32, 32, 32},
                        .white = 1000};
  for (const auto& point : {WhitePoint{0, 0}, {20, 20}, {-50, 900}}) {
    const auto found = MakeGrey(samples, point);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->multipliers, (std::array{2.0F, 1.0F, 4.0F, 1.0F})) << point.x;
  }
  EXPECT_FALSE(MakeGrey(samples, {55, 20}));
  const auto grid = MakeGrid(samples, 6, 4);
  ASSERT_EQ(grid.cells.size(), 24U);
  EXPECT_EQ(grid.cells[0], (std::array{0.1, 0.2, 0.05}));
}

}  // namespace
}  // namespace ml::rawconvert
