#include "rawconvert/look/render_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <vector>

#include "rawconvert/look/tone_curve.h"

namespace ml::rawconvert {
namespace {

constexpr SensorMatrix kIdentity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};
using Sample = std::function<int(int x, int y, int colour)>;

/// A picture of which a border of 3 left and 2 above, and 1 on the other sides, is not shown.
struct Built {
  Built(int width, int height, const Sample& sample)
      : samples(static_cast<std::size_t>(width + 4) * static_cast<std::size_t>(height + 3) * 4) {
    picture = {samples.data(), width + 4, height + 3, 3, 3, 2, width, height};
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const int pixel = static_cast<int>(i / 4), x = pixel % picture.width - 3, y = pixel / picture.width - 2;
      samples[i] = static_cast<std::uint16_t>(sample(x, y, static_cast<int>(i % 4)));
    }
  }
  std::vector<std::uint16_t> samples;
  SensorPicture picture;
};

int At(const imaging::PixelBuffer& pixels, int x, int y, int channel) {
  const auto* at = pixels.Row(y) + static_cast<std::ptrdiff_t>(3 * x + channel) * pixels.bytesPerSample;
  if (pixels.bytesPerSample == 1) return std::to_integer<int>(*at);
  std::uint16_t value = 0;
  std::memcpy(&value, at, sizeof value);
  return value;
}

imaging::PixelBuffer Render(const Built& built, const PictureLook& look, int bytes = 2, float gain = 1) {
  return RenderPicture(built.picture, {.look = look, .toSrgb = kIdentity, .gain = gain, .bytesPerSample = bytes}, {});
}

TEST(RenderPicture, LinearIsTheSensorsLightInItsPlace) {
  const Built built(150, 70, [](int x, int y, int colour) { return (x * 100 + y * 10 + colour * 5) & 0x7FFF; });
  struct Case {
    int exposure;
    double factor;
  };
  for (const auto& c : std::initializer_list<Case>{{0, 1}, {10, 2}, {-20, 0.25}}) {
    const auto pixels =
        Render(built, {.falseColourFilter = false, .exposureTenths = c.exposure, .linear = true}, 2, 0.5F);
    for (const auto& [x, y] : {std::pair{0, 0}, {149, 69}, {7, 33}, {149, 0}}) {
      for (int channel = 0; channel < 3; ++channel) {
        EXPECT_NEAR(At(pixels, x, y, channel), (x * 100 + y * 10 + channel * 5) * c.factor, 0.51) << x << "," << y;
      }
    }
  }
  const Built bright(8, 8, [](int, int, int) { return 40000; });
  EXPECT_EQ(At(Render(bright, {.exposureTenths = 10, .linear = true}), 3, 3, 0), 65535);
}

TEST(RenderPicture, GreyStaysGreyAndWhiteIsWhite) {
  struct Case {
    const char* name;
    PictureLook look;
  };
  for (const auto& c :
       std::initializer_list<Case>{{"plain", {}},
                                   {"strong", {.contrast = 2, .saturation = 2, .tone = 2, .sharpening = 1.6}},
                                   {"weak", {.contrast = -2, .saturation = -2, .tone = -2}},
                                   {"grey", {.colours = PictureLook::Colours::Grey}},
                                   {"adobe", {.space = PictureLook::Space::AdobeRgb}}}) {
    const Built ramp(64, 9, [](int x, int, int) { return std::clamp(x * 1024, 0, 65535); });
    const auto pixels = Render(ramp, c.look);
    for (int x = 0; x < 64; ++x) {
      EXPECT_NEAR(At(pixels, x, 4, 0), At(pixels, x, 4, 1), 120) << c.name << x;
      EXPECT_NEAR(At(pixels, x, 4, 2), At(pixels, x, 4, 1), 120) << c.name << x;
      if (x > 0) {
        EXPECT_GE(At(pixels, x, 4, 1), At(pixels, x - 1, 4, 1)) << c.name << x;
      }
    }
    const Built white(8, 8, [](int, int, int) { return 65535; });
    EXPECT_GE(At(Render(white, c.look, 2, 0.8F), 4, 4, 1), 65400) << c.name;
  }
}

TEST(RenderPicture, EightBitsAreTheHighBytes) {
  const Built built(33, 17, [](int x, int y, int colour) { return (x * 977 + y * 31 + colour * 4001) & 0xFFFF; });
  const PictureLook look{.sharpening = 0.8};
  const auto wide = Render(built, look, 2), narrow = Render(built, look, 1);
  for (int y = 0; y < 17; ++y) {
    for (int x = 0; x < 33; ++x) EXPECT_EQ(At(narrow, x, y, y % 3), At(wide, x, y, y % 3) >> 8);
  }
}

TEST(RenderPicture, TheFilterTakesAwaySinglePixelsOfFalseColour) {
  const Built speck(21, 21, [](int x, int y, int colour) { return x == 10 && y == 10 && colour == 0 ? 50000 : 20000; });
  const PictureLook on{.linear = true}, off{.falseColourFilter = false, .linear = true};
  EXPECT_EQ(At(Render(speck, on), 10, 10, 0), 20000);
  EXPECT_EQ(At(Render(speck, off), 10, 10, 0), 50000);
  // A bright thing without colour is no false colour.
  const Built star(21, 21, [](int x, int y, int) { return x == 10 && y == 10 ? 50000 : 20000; });
  EXPECT_EQ(At(Render(star, on), 10, 10, 0), 50000);
}

TEST(RenderPicture, SharpeningLiftsEdgesAndLeavesFlatPartsAndNoise) {
  const Built edge(40, 40, [](int x, int, int) { return x < 20 ? 8000 : 16000; });
  const auto soft = Render(edge, {}), sharp = Render(edge, {.sharpening = 0.8});
  EXPECT_GT(At(sharp, 20, 20, 1), At(soft, 20, 20, 1) + 1000);
  EXPECT_LT(At(sharp, 19, 20, 1), At(soft, 19, 20, 1) - 1000);
  EXPECT_EQ(At(sharp, 5, 20, 1), At(soft, 5, 20, 1));
  EXPECT_EQ(At(sharp, 20, 0, 1), At(sharp, 20, 20, 1));
  const Built noise(40, 40, [](int x, int y, int) { return 16000 + (x + y) % 2 * 60; });
  const auto before = Render(noise, {}), after = Render(noise, {.sharpening = 0.8});
  EXPECT_NEAR(At(after, 20, 20, 1), At(before, 20, 20, 1), 12);
}

TEST(RenderPicture, LevelsMoveContrastSaturationAndTone) {
  const auto render = [](int red, int green, int blue, const PictureLook& look) {
    const std::array colours = {red, green, blue, 0};
    const Built built(8, 8, [&](int, int, int c) { return colours[static_cast<std::size_t>(c)]; });
    const auto pixels = Render(built, look);
    return std::array{At(pixels, 4, 4, 0), At(pixels, 4, 4, 1), At(pixels, 4, 4, 2)};
  };
  const auto range = [](const auto& colour) { return std::ranges::max(colour) - std::ranges::min(colour); };
  const auto plain = render(20000, 9000, 6000, {});
  EXPECT_GT(range(render(20000, 9000, 6000, {.saturation = 1})), range(plain));
  EXPECT_LT(range(render(20000, 9000, 6000, {.saturation = -1})), range(plain));
  // Towards yellow there is more green in skin, towards red less.
  EXPECT_GT(render(20000, 9000, 6000, {.tone = 2})[1], plain[1]);
  EXPECT_LT(render(20000, 9000, 6000, {.tone = -2})[1], plain[1]);
  const auto steps = [&](double contrast) {
    const PictureLook look{.contrast = contrast};
    return render(20000, 20000, 20000, look)[1] - render(3000, 3000, 3000, look)[1];
  };
  EXPECT_GT(steps(1), steps(0));
  EXPECT_GT(steps(0), steps(-2));
}

}  // namespace
}  // namespace ml::rawconvert
