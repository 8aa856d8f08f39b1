#include "rawconvert/nef/develop_nef.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numeric>

#include "platform/errors.h"
#include "rawconvert/nef/nef_colour.h"
#include "support/nef_builder.h"
#include "support/told_progress.h"

namespace ml::rawconvert {
namespace {

using Values = std::array<double, 4>;

NefSensor Scene(std::string_view model, int width, int height) {
  return {*FindNefCamera(model), width, height, test::NefScene(width, height, 7)};
}

/// Sites that show `value` of the colour's number.
NefSensor Painted(std::string_view model, int width, int height,
                  const std::function<int(int y, int x, int colour)>& value) {
  NefSensor sensor{*FindNefCamera(model), width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      sensor.samples.push_back(static_cast<std::uint16_t>(value(y, x, ColourAt(sensor.camera, y, x))));
    }
  }
  return sensor;
}

/// With the multipliers of a frame that is grey on average put back to 1.
NefSensor WithGreyCorner(NefSensor sensor) {
  for (const int y : {0, 1}) {
    for (const int x : {0, 1}) sensor.samples[static_cast<std::size_t>(y * sensor.width + x)] = 2000;
  }
  return sensor;
}
constexpr NefSettings kPlain{.tone = NefTone::Linear, .whiteBalance = nef_white_balance::kCustom};

int SampleAt(const imaging::PixelBuffer& pixels, int y, int x, int c) {
  return reinterpret_cast<const std::uint16_t*>(pixels.Row(y))[x * 3 + c];
}
int Linear(double level) { return static_cast<int>(level) * 65535 / 4095; }

/// The method as it is told in words, for one site: each direction's average of each colour over the sites of a small
/// neighbourhood in that direction.
class Reference {
 public:
  explicit Reference(const NefSensor& sensor) : sensor_(sensor) {}

  Values At(int y, int x) const {
    const auto gradients = Gradients(y, x);
    const auto [low, high] = std::ranges::minmax(gradients);
    Values sums{};
    int count = 0;
    for (std::size_t d = 0; d < 8; ++d) {
      if (gradients[d] >= low + high / 2) continue;
      const auto average = Average(y, x, kStep[d][0], kStep[d][1]);
      for (std::size_t c = 0; c < 4; ++c) sums[c] += average[c];
      ++count;
    }
    const auto own = static_cast<std::size_t>(Colour(y, x));
    Values result = count == 0 ? Nearest(y, x) : sums;
    for (std::size_t c = 0; count != 0 && c < 4; ++c) {
      result[c] = std::max(0.0, Site(y, x) + (sums[c] - sums[own]) / count);
    }
    result[own] = Site(y, x);
    return result;
  }

 private:
  static constexpr int kStep[8][2] = {{-1, 0}, {0, 1}, {1, 0}, {0, -1}, {-1, 1}, {1, 1}, {1, -1}, {-1, -1}};

  double Site(int y, int x) const { return sensor_.Row(y)[x]; }
  int Colour(int y, int x) const { return ColourAt(sensor_.camera, y, x); }
  double Step(int y, int x, int dy, int dx) const { return std::abs(Site(y, x) - Site(y + 2 * dy, x + 2 * dx)); }

  std::array<double, 8> Gradients(int y, int x) const {
    std::array<double, 8> all{};
    for (std::size_t d = 0; d < 8; ++d) {
      const int v = kStep[d][0], h = kStep[d][1];
      all[d] = Step(y, x, v, h) + Step(y - v, x - h, v, h);
      if (v != 0 && h != 0) {
        all[d] += Step(y, x - h, v, h) + Step(y - v, x, v, h);
      } else {
        for (const int side : {-1, 1}) {
          const int sy = y + side * h, sx = x + side * v;
          all[d] += (Step(sy, sx, v, h) + Step(sy - v, sx - h, v, h)) / 2;
        }
      }
    }
    return all;
  }

  /// Of the sites of three rows and columns in a direction: those of the centre's colour on its line (a green one: the
  /// corner, if there is one), of the others all, but of one next to the centre in a straight direction only that.
  Values Average(int y, int x, int v, int h) const {
    const bool diagonal = v != 0 && h != 0;
    const auto mean = [&](std::initializer_list<std::array<int, 2>> places) {
      double sum = 0;
      for (const auto& [py, px] : places) sum += Site(y + py, x + px);
      return sum / static_cast<double>(places.size());
    };
    Values all{};
    const auto set = [&](int dy, int dx, double value) {
      all[static_cast<std::size_t>(Colour(y + dy, x + dx))] = value;
    };
    const bool threeColours = sensor_.camera.colours == 3, green = threeColours && Colour(y, x) == 1;
    if (!diagonal) {
      set(h, v, mean({{h, v}, {-h, -v}, {2 * v + h, 2 * h + v}, {2 * v - h, 2 * h - v}}));
      if (!green) set(1, 1, mean({{v + h, h + v}, {v - h, h - v}}));
      set(v, h, Site(y + v, x + h));
    } else if (threeColours && !green) {
      set(v, 0, mean({{v, 0}, {0, h}, {2 * v, h}, {v, 2 * h}}));
      set(1, 1, Site(y + v, x + h));
    } else {
      set(0, h, mean({{0, h}, {2 * v, h}}));
      set(v, 0, mean({{v, 0}, {v, 2 * h}}));
      set(1, 1, Site(y + v, x + h));
    }
    if (!green || !diagonal) set(0, 0, mean({{0, 0}, {2 * v, 2 * h}}));
    return all;
  }

  Values Nearest(int y, int x) const {
    Values sums{}, counts{};
    for (int i = 0; i < 9; ++i) {
      const int dy = i / 3 - 1, dx = i % 3 - 1;
      const auto colour = static_cast<std::size_t>(Colour(y + dy, x + dx));
      sums[colour] += Site(y + dy, x + dx);
      counts[colour] += 1;
    }
    for (std::size_t c = 0; c < 4; ++c) sums[c] /= std::max(1.0, counts[c]);
    return sums;
  }

  const NefSensor& sensor_;
};

TEST(DevelopNefTest, EstimatesEachSiteByTheSmoothDirections) {
  for (const auto* model : {"NIKON D1", "NIKON D2H", "NIKON D100"}) {
    for (const int width : {46, 47, 300}) {
      const auto sensor = WithGreyCorner(Scene(model, width, 27));
      const auto pixels = DevelopNef(sensor, kPlain);
      ASSERT_EQ(std::pair(pixels.width, pixels.height), std::pair(width - 4, 23));
      const Reference reference(sensor);
      for (int i = 0; i < pixels.width * pixels.height; ++i) {
        const int y = i / pixels.width, x = i % pixels.width;
        const auto wanted = reference.At(y + 2, x + 2);
        for (int c = 0; c < 3; ++c) {
          const double level = std::min(4095.0, wanted[static_cast<std::size_t>(c)]);
          EXPECT_NEAR(SampleAt(pixels, y, x, c), level * 65535 / 4095, 17) << model << ' ' << y << ' ' << x << ' ' << c;
        }
      }
    }
  }
}

TEST(DevelopNefTest, EstimatesAllOfFourColours) {
  const auto flat = Painted("E5700", 20, 16, [](int, int, int c) { return 1000 + 200 * c; });
  const auto sensor = Scene("E5700", 46, 26);
  const auto colours = [](const NefSensor& of, const Values& v) {  // green, magenta, cyan, yellow
    const auto m = FindNefMultipliers(of, kPlain);
    const double mean = (v[0] + v[1] + v[2] + v[3]) / 4, blue = (v[1] + v[2] - v[0] - v[3]) / 4,
                 red = (v[1] + v[3] - v[0] - v[2]) / 4;
    return Values{m.red * std::clamp(mean + 1.402 * red, 0.0, 4095.0),
                  std::clamp(mean - 0.34414 * blue - 0.71414 * red, 0.0, 4095.0),
                  m.blue * std::clamp(mean + 1.772 * blue, 0.0, 4095.0)};
  };
  for (const auto& of : {flat, sensor}) {
    const auto pixels = DevelopNef(of, kPlain);
    for (int y = 0; y < pixels.height; ++y) {
      for (int x = 0; x < pixels.width; ++x) {
        const auto wanted = colours(of, Reference(of).At(y + 2, x + 2));
        for (int c = 0; c < 3; ++c) {
          EXPECT_NEAR(SampleAt(pixels, y, x, c), std::min(4095.0, wanted[static_cast<std::size_t>(c)]) * 65535 / 4095,
                      70)
              << y << ' ' << x << ' ' << c;
        }
      }
    }
  }
}

TEST(DevelopNefTest, KeepsAFlatField) {
  const auto flat = Painted("NIKON D1", 30, 22, [](int, int, int c) { return 500 * (c + 1); });
  const auto pixels = DevelopNef(flat, {.tone = NefTone::Linear, .whiteBalance = nef_white_balance::kShade});
  const double levels[] = {std::round(500 * 2.9098), 1000, std::round(1500 * 1.4392)};
  for (int i = 0; i < pixels.width * pixels.height * 3; ++i) {
    EXPECT_EQ(SampleAt(pixels, i / 3 / pixels.width, i / 3 % pixels.width, i % 3), Linear(levels[i % 3])) << i;
  }
}

/// Only a colour that a column itself does not have is taken from both sides of the edge.
TEST(DevelopNefTest, KeepsAnEdgeSharp) {
  constexpr int kEdge = 14, kDark = 300, kBright = 3000;
  const auto edge = Painted("NIKON D1", 30, 22, [](int, int x, int) { return x < kEdge ? kDark : kBright; });
  const auto pixels = DevelopNef(edge, kPlain);
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      const int column = x + 2, absent = column % 2 == 0 ? 0 : 2;
      const bool atEdge = column == kEdge || column == kEdge - 1;
      for (int c = 0; c < 3; ++c) {
        const double side = column < kEdge ? kDark : kBright;
        const double level = atEdge && c == absent ? (kDark + kBright) / 2 : side;
        EXPECT_EQ(SampleAt(pixels, y, x, c), Linear(level)) << x << ' ' << y << ' ' << c;
      }
    }
  }
}

TEST(DevelopNefTest, GivesTheSizesOfTheCamera) {
  const auto wide = Painted("NIKON D1X", 40, 20, [](int y, int, int) { return 100 * y; });
  const auto pixels = DevelopNef(wide, kPlain);
  ASSERT_EQ(std::pair(pixels.width, pixels.height), std::pair(4024, 2622));
  EXPECT_EQ(pixels.bytesPerSample, 2);
  EXPECT_NEAR(SampleAt(pixels, 1311, 2000, 1), 950 * 65535 / 4095, 100);  // half way down
  EXPECT_NEAR(SampleAt(pixels, 0, 0, 1), Linear(200), 600);
  EXPECT_NEAR(SampleAt(pixels, 2621, 4023, 1), Linear(1700), 600);
  EXPECT_EQ(SmallNefSize(wide).width, 18);
  EXPECT_EQ(SmallNefSize(wide).height, 8);
}

TEST(DevelopNefSmallTest, TakesEachPixelFromACell) {
  const auto sensor =
      Painted("NIKON D2H", 300, 11, [](int y, int x, int c) { return c == 1 ? 40 * y + x : 600 * (c + 1); });
  const auto pixels = DevelopNefSmall(sensor, {.tone = NefTone::Linear, .whiteBalance = 6});
  ASSERT_EQ(std::pair(pixels.width, pixels.height), std::pair(148, 3));
  for (const int x : {0, 1, 147}) {
    for (const int y : {0, 2}) {
      const auto* pixel = pixels.Row(y) + x * 3;
      const int column = 2 + 2 * x, row = 2 + 2 * y;  // green sites of D2H cells: upper left, lower right
      const int green = (40 * row + column + 40 * (row + 1) + column + 1 + 1) / 2;
      EXPECT_EQ(std::to_integer<int>(pixel[0]), Linear(std::round(600 * 1.4078)) >> 8);
      EXPECT_EQ(std::to_integer<int>(pixel[1]), Linear(green) >> 8);
      EXPECT_EQ(std::to_integer<int>(pixel[2]), Linear(4095) >> 8);  // 1800 x 2.8314, capped
    }
  }
}

TEST(DevelopNefTest, TellsOfItsProgressAndStops) {
  test::ToldProgress progress;
  const auto sensor = Scene("NIKON D1", 64, 400);
  DevelopNef(sensor, {}, {.progress = &progress});
  EXPECT_TRUE(std::ranges::is_sorted(progress.percents));
  EXPECT_TRUE(std::ranges::all_of(progress.percents, [](int p) { return p >= 20 && p <= 100; }));
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(DevelopNef(sensor, {}, {.stop = stop.get_token()}), platform::Cancelled);
  EXPECT_THROW(DevelopNefSmall(sensor, {}, {.stop = stop.get_token()}), platform::Cancelled);
}

/// By way of hue: the textbook's way there and back.
std::array<double, 3> Saturated(std::array<double, 3> rgb, double factor) {
  const auto [low, high] = std::ranges::minmax(rgb);
  const double lightness = (low + high) / 2, reach = lightness <= 0.5 ? low + high : 2 - low - high;
  if (high == low) return rgb;
  const double range = high - low;
  const auto [r, g, b] = rgb;
  const double hue = r == high ? (g - b) / range : g == high ? 2 + (b - r) / range : 4 + (r - g) / range;
  const double saturation = std::min(1.0, range / reach * factor);
  const double chroma = saturation * (1 - std::abs(2 * lightness - 1));
  const auto channel = [&](double shift) {
    const double sixth = std::fmod(hue + shift + 12, 6);
    return lightness + chroma * (std::clamp(std::abs(sixth - 3) - 1, 0.0, 1.0) - 0.5);
  };
  return {channel(0), channel(4), channel(2)};
}

TEST(NefColourTest, RaisesTheSaturationAndAppliesGamma) {
  const std::array<int, 3> colours[] = {{0, 0, 0},          {4095, 4095, 4095}, {800, 800, 800}, {1000, 900, 1100},
                                        {3000, 500, 200},   {4095, 4000, 3000}, {10, 2000, 900}, {300, 310, 4000},
                                        {2500, 2500, 1000}, {1200, 3900, 3900}};
  const struct {
    int setting;
    double factor;
  } settings[] = {{-1, 1.3 * 0.8}, {0, 1.3}, {1, 1.3 * 1.2}, {-10, 1.3}};
  for (const auto& [setting, factor] : settings) {
    const NefColour colour({.saturation = setting}, {});
    for (const auto& rgb : colours) {
      std::array<std::int16_t, 3> in{};
      std::array<std::uint16_t, 3> out{};
      for (std::size_t c = 0; c < 3; ++c) in[c] = static_cast<std::int16_t>(rgb[c]);
      colour.Apply({&in[0], 1}, {&in[1], 1}, {&in[2], 1}, out.data(), 3);
      const auto wanted = Saturated({rgb[0] / 4095.0, rgb[1] / 4095.0, rgb[2] / 4095.0}, factor);
      for (std::size_t c = 0; c < 3; ++c) {
        const double level = std::round(wanted[c] * 4095);
        const double near = std::pow((level + 1) / 4095, 1 / 2.2) - std::pow(std::max(0.0, level - 1) / 4095, 1 / 2.2);
        EXPECT_NEAR(out[c], std::pow(level / 4095, 1 / 2.2) * 65535, near * 65535 * 0.51 + 1)
            << setting << ' ' << rgb[0];
      }
    }
  }
}

}  // namespace
}  // namespace ml::rawconvert
