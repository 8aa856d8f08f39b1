#include "imaging/operators/noise_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "imaging/operators/sharpen_luma.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr int kSide = 192;

template <class Sample>
Sample* PixelAt(PixelBuffer& pixels, int x, int y) {
  return reinterpret_cast<Sample*>(pixels.Row(y)) + 3 * x;
}

/// Dark left of the middle and light right of it, with noise of that standard deviation (0..1) in each channel.
template <class Sample>
PixelBuffer NoisyEdge(double deviation) {
  constexpr double kRange = sizeof(Sample) == 1 ? 255 : 65535;
  auto pixels = MakePixelBuffer(kSide, kSide, PixelOrder::Rgb, sizeof(Sample));
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, deviation);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      for (int i = 0; i < 3; ++i)
        PixelAt<Sample>(pixels, x, y)[i] =
            static_cast<Sample>(std::lround(((x < kSide / 2 ? 0.25 : 0.75) + noise(random)) * kRange));
    }
  }
  return pixels;
}

struct Statistics {
  double mean, deviation;
};

/// Of the green samples of columns `left` up to `right`, on the scale 0..1.
template <class Sample>
Statistics Of(PixelBuffer& pixels, int left, int right) {
  double sum = 0, squared = 0;
  const double count = (right - left) * kSide, range = sizeof(Sample) == 1 ? 255 : 65535;
  for (int y = 0; y < kSide; ++y) {
    for (int x = left; x < right; ++x) {
      const double value = PixelAt<Sample>(pixels, x, y)[1] / range;
      sum += value, squared += value * value;
    }
  }
  return {sum / count, std::sqrt(squared / count - sum * sum / (count * count))};
}

template <class Sample>
void ExpectFlatPartsSmoothed() {
  constexpr double kNoise = 0.01;
  const struct {
    int blending;
    double most, least;
  } cases[] = {{0, 1.02, 0.98}, {50, 0.7, 0.4}, {75, 0.5, 0.2}, {95, 0.4, 0.05}};
  for (const auto& [blending, most, least] : cases) {
    SCOPED_TRACE(blending);
    auto pixels = NoisyEdge<Sample>(kNoise);
    const auto before = Of<Sample>(pixels, 20, 80);
    CSmNR filter;
    filter.SetBlending(blending);
    platform::NoProgress progress;
    filter.Process(pixels, {.iso = 100}, progress);
    const auto flat = Of<Sample>(pixels, 20, 80);
    EXPECT_LT(flat.deviation, before.deviation * most);
    EXPECT_GT(flat.deviation, before.deviation * least);
    EXPECT_NEAR(flat.mean, before.mean, 0.002);
    // The edge is as steep as before.
    EXPECT_NEAR(Of<Sample>(pixels, kSide / 2 - 1, kSide / 2).mean, 0.25, 0.015);
    EXPECT_NEAR(Of<Sample>(pixels, kSide / 2, kSide / 2 + 1).mean, 0.75, 0.015);
  }
}

TEST(NoiseFilter, SmoothsFlatPartsAndLeavesEdges) {
  ExpectFlatPartsSmoothed<std::uint8_t>();
  ExpectFlatPartsSmoothed<std::uint16_t>();
}

TEST(NoiseFilter, TakesNoMoreForNoiseThanTheShotCanHave) {
  // What varies by a tenth is texture at ISO 100, and may be noise at ISO 25,600.
  platform::NoProgress progress;
  auto low = NoisyEdge<std::uint16_t>(0.08), high = low;
  CSmNR().Process(low, {.iso = 100}, progress);
  CSmNR().Process(high, {.iso = 25600}, progress);
  EXPECT_GT(Of<std::uint16_t>(low, 20, 80).deviation, 0.06);
  EXPECT_LT(Of<std::uint16_t>(high, 20, 80).deviation, 0.04);
}

TEST(NoiseFilter, EndsWhenItIsStopped) {
  const auto stop = std::make_unique<std::stop_source>();  // one on the stack draws a false warning of g++ 12
  stop->request_stop();
  platform::NoProgress progress;
  auto pixels = NoisyEdge<std::uint8_t>(0.01);
  EXPECT_THROW(CSmNR().Process(pixels, {}, progress, stop->get_token()), platform::Cancelled);
  EXPECT_THROW(ApplyHqSharpen(pixels, 75, stop->get_token()), platform::Cancelled);
}

TEST(HqSharpen, RaisesDetailWithoutHalos) {
  // A soft edge over four columns.
  auto pixels = MakePixelBuffer(kSide, kSide, PixelOrder::Rgb, 2);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int step = std::clamp(x - kSide / 2 + 2, 0, 4);
      for (int i = 0; i < 3; ++i)
        PixelAt<std::uint16_t>(pixels, x, y)[i] = static_cast<std::uint16_t>(16000 + step * 8000);
    }
  }
  auto sharp = pixels;
  ApplyHqSharpen(sharp, 75);
  const auto at = [&](PixelBuffer& p, int x) { return static_cast<int>(*PixelAt<std::uint16_t>(p, kSide / 2 + x, 5)); };
  EXPECT_LT(at(sharp, -1), at(pixels, -1) - 500);
  EXPECT_GT(at(sharp, 1), at(pixels, 1) + 500);
  for (int x = -5; x < 5; ++x) {
    EXPECT_GE(at(sharp, x), 16000 - 0.15 * 16000 - 1) << x;
    EXPECT_LE(at(sharp, x), 48000 + 0.15 * 16000 + 1) << x;
  }
  EXPECT_EQ(at(sharp, -20), 16000);
  auto untouched = pixels;
  ApplyHqSharpen(untouched, 0);
  EXPECT_EQ(untouched.data, pixels.data);
}

}  // namespace
}  // namespace ml::imaging
