#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>

#include "imaging/magick/magick_image.h"
#include "imaging/operators/auto_levels.h"
#include "imaging/operators/combine_renders.h"
#include "imaging/operators/picture_operators.h"
#include "imaging/scale.h"

namespace ml::imaging {
namespace {

using Colour = std::array<int, 3>;

template <class Sample>
PixelBuffer Of(int width, const std::vector<Colour>& colours) {
  auto pixels = MakePixelBuffer(width, static_cast<int>(colours.size()) / width, PixelOrder::Rgb, sizeof(Sample));
  auto* out = reinterpret_cast<Sample*>(pixels.data.data());
  for (const auto& colour : colours) {
    for (const int sample : colour) *out++ = static_cast<Sample>(sample);
  }
  return pixels;
}
PixelBuffer Of16(int width, const std::vector<Colour>& colours) { return Of<std::uint16_t>(width, colours); }

Colour At16(const PixelBuffer& pixels, int x, int y = 0) {
  const auto* p = reinterpret_cast<const std::uint16_t*>(pixels.Row(y)) + 3 * x;
  return {p[0], p[1], p[2]};
}

TEST(AutoLevels, CountLumaCutByHighByte) {
  auto counted = HistogramLuma(Of<std::uint8_t>(3, {{255, 0, 0}, {0, 255, 0}, {200, 200, 200}}));
  EXPECT_EQ(counted[76], 1u);  // 76.245
  EXPECT_EQ(counted[149], 1u);
  EXPECT_EQ(counted[200], 1u);
  counted = HistogramLuma(Of16(2, {{0, 0, 65535}, {51455, 51455, 51455}}));
  EXPECT_EQ(counted[29], 1u);
  EXPECT_EQ(counted[200], 1u);  // 51455 is just below 201 * 256
}

TEST(AutoLevels, StopBeforeMoreIsClippedThanAllowed) {
  // 100 pixels a level at 10, 20, 130, 240 and 250.
  LumaHistogram histogram{};
  for (const std::size_t level : {10, 20, 130, 240, 250}) histogram[level] = 100;
  struct Case {
    ClippedPercent clipped;
    BlackScan scan;
    LevelPoints points;
  };
  const Case cases[] = {
      {{0, 0}, BlackScan::Below, {0, 255}},        {{0, 0}, BlackScan::AtMost, {9, 255}},
      {{20, 20}, BlackScan::Below, {9, 251}},      {{20, 20}, BlackScan::AtMost, {19, 251}},
      {{20.4, 20.4}, BlackScan::Below, {19, 241}}, {{100, 0}, BlackScan::Below, {127, 255}},
      {{0, 100}, BlackScan::Below, {0, 11}},       {{100, 100}, BlackScan::Below, {127, 128}},
  };
  for (const auto& [clipped, scan, points] : cases) {
    const auto found = AutoLevelsPoints(histogram, 500, clipped, scan);
    EXPECT_EQ(found.low, points.low) << clipped.black;
    EXPECT_EQ(found.high, points.high) << clipped.white;
  }
  EXPECT_EQ(AutoLevelsText({}), "0.0,1.0,65535.0");
  EXPECT_EQ(AutoLevelsText({10, 200}), "2560.0,1.0,51455.0");
  EXPECT_EQ(ManualLevelsText({1, 254}, 0.015), "256.0,0.015,65279.0");
}

TEST(PictureOperators, ComputeInSixteenBits) {
  const std::vector<Colour> colours = {{16384, 16384, 16384}, {60000, 20000, 20000}, {0, 65535, 32768}};
  const auto source = Of16(3, colours);
  const auto image = [&] { return MagickImage::FromPixels(source); };
  EXPECT_EQ(image().ToPixels(2).data, source.data);

  auto levelled = image();
  ASSERT_TRUE(levelled.Level("10000.0,1.0,50000.0"));
  EXPECT_EQ(At16(levelled.ToPixels(2), 1), (Colour{65535, 16384, 16384}));  // (20000 - 10000) / 40000 of 65535
  EXPECT_EQ(At16(levelled.ToPixels(2), 2), (Colour{0, 65535, 37303}));

  auto lighter = image();
  ASSERT_TRUE(ApplyGamma(lighter, 2.0));
  EXPECT_NEAR(At16(lighter.ToPixels(2), 0)[1], 32768, 2);  // the root of a quarter is a half

  auto grey = image();
  ASSERT_TRUE(ApplySaturation(grey, 0));
  const auto second = At16(grey.ToPixels(2), 1);
  EXPECT_NEAR(second[0], 40000, 2);  // lightness is the mean of the largest and the smallest
  EXPECT_NEAR(second[2], 40000, 2);
  auto half = image();
  ASSERT_TRUE(ApplySaturation(half, 50));
  EXPECT_NEAR(At16(half.ToPixels(2), 1)[0], 50000, 2);

  auto scaled = MagickImage::FromPixels(Of16(4, std::vector<Colour>(16, {1000, 30000, 60000})));
  ASSERT_TRUE(scaled.Resize(7, 3, ResizeFilter::Sinc));
  EXPECT_EQ(scaled.Width(), 7);
  EXPECT_EQ(At16(scaled.ToPixels(2), 6, 2), (Colour{1000, 30000, 60000}));
  EXPECT_FALSE(scaled.Resize(0, 3, ResizeFilter::Sinc));
  EXPECT_EQ(scaled.Width(), 7);
}

TEST(PictureOperators, SharpeningLeavesTheFrame) {
  // A bright square, so that every pixel at its edge changes.
  constexpr int kSide = 8;
  std::vector<Colour> colours(kSide * kSide, {10000, 10000, 10000});
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      if ((x + y) % 2 == 0) colours[static_cast<std::size_t>(y * kSide + x)] = {40000, 40000, 40000};
    }
  }
  const auto source = Of16(kSide, colours);
  for (const auto lastRow : {LastRow::Sharpened, LastRow::StaysAsItWas}) {
    auto image = MagickImage::FromPixels(source);
    auto buffer = source;
    ASSERT_TRUE(ApplyUnsharpMask(image, buffer, {.radius = 1, .amount = 1}, lastRow));
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const bool frame = y == 0 || x == 0 || x == kSide - 1 || (y == kSide - 1 && lastRow == LastRow::StaysAsItWas);
        EXPECT_EQ(At16(buffer, x, y) == At16(source, x, y), frame) << x << " " << y;
      }
    }
  }
}

TEST(Turned, MovesSamplesOfTwoBytes) {
  const auto source = Of16(2, {{1, 256, 3}, {4, 5, 6000}});
  const auto turned = Turned(source, Turn::cw90);
  EXPECT_EQ(turned.width, 1);
  EXPECT_EQ(At16(turned, 0, 0), (Colour{1, 256, 3}));
  EXPECT_EQ(At16(turned, 0, 1), (Colour{4, 5, 6000}));
  EXPECT_EQ(At16(Turned(source, Turn::half), 0), (Colour{4, 5, 6000}));
  EXPECT_EQ(Turned(Turned(source, Turn::cw90), Turn::cw270).data, source.data);
}

/// One row: normal pixels over linear ones, and a last pair that sets the white point.
Colour Merged(const Colour& normal, int linear, std::string_view model = "Canon EOS D60") {
  auto a = Of16(2, {normal, {0, 0, 0}});
  auto b = Of16(2, {{linear, linear, linear}, {65535, 65535, 65535}});
  CombineRenders(a, b, model);
  EXPECT_EQ(At16(a, 1), (Colour{0, 0, 0}));
  return At16(a, 0);
}

TEST(CombineRenders, TakeHighlightsFromTheLinearRender) {
  const auto grey = [](double luma) {
    const int value = static_cast<int>(luma * 65535 + 0.5);
    return Colour{value, value, value};
  };
  const auto toned = [](int linear, double gamma) { return 65535 * std::pow(linear / 65535.0, 1 / gamma); };
  // Below the fade, and where the other one is brighter, nothing changes.
  EXPECT_EQ(Merged(grey(0.64), 0), grey(0.64));
  EXPECT_EQ(Merged(grey(0.80), 65535), grey(0.80));
  EXPECT_NEAR(Merged(grey(0.65), 0)[0], grey(0.65)[0], 2);
  // In the middle of it half of each counts; above it the other render alone.
  EXPECT_NEAR(Merged(grey(0.80), 16384)[1], (0.8 * 65535 + toned(16384, 2.4)) / 2, 8);
  EXPECT_NEAR(Merged(grey(0.99), 16384)[1], toned(16384, 2.4), 8);
  // Colours keep their ratio.
  const auto coloured = Merged({65535, 65535, 30000}, 16384);
  EXPECT_NEAR(coloured[2] / static_cast<double>(coloured[0]), 30000.0 / 65535, 0.001);

  constexpr auto kBlending = "Canon EOS-1D";
  EXPECT_EQ(Merged(grey(0.89), 0, kBlending), grey(0.89));
  EXPECT_NEAR(Merged(grey(0.95), 16384, kBlending)[0], (0.95 * 65535 + 65535 * std::pow(16384 / 56320.0, 1 / 3.1)) / 2,
              16);
}

TEST(CombineRenders, SetWhiteWhereOnePixelInTenThousandIsBrighter) {
  // 20,000 pixels, two of which may be brighter than white: it becomes 40001 + 5.
  std::vector<Colour> linear(20000, {40000, 100, 100});
  linear[7] = linear[9] = {0, 65000, 0};
  auto a = Of16(200, std::vector<Colour>(20000, {65535, 65535, 65535}));
  auto b = Of16(200, linear);
  CombineRenders(a, b, "Canon PowerShot G2");
  EXPECT_NEAR(At16(b, 0)[0], 65535 * std::pow(40000 / 40006.0, 1 / 2.4), 3);
  EXPECT_EQ(At16(b, 7)[1], 65535);
}

}  // namespace
}  // namespace ml::imaging
