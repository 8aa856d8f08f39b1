#include "rawconvert/nef/nef_white_balance.h"

#include <gtest/gtest.h>

#include <array>

namespace ml::rawconvert {
namespace {

/// A frame whose sites show these values by the colour's number.
NefSensor Frame(std::string_view model, int width, int height, const std::array<int, 4>& colours) {
  NefSensor sensor{*FindNefCamera(model), width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      sensor.samples.push_back(
          static_cast<std::uint16_t>(colours[static_cast<std::size_t>(ColourAt(sensor.camera, y, x))]));
    }
  }
  return sensor;
}

void PutCell(NefSensor& sensor, int y, int x, const std::array<int, 4>& colours) {
  for (int i = 0; i < 4; ++i) {
    const int row = y + i / 2, column = x + i % 2;
    sensor.samples[static_cast<std::size_t>(row * sensor.width + column)] =
        static_cast<std::uint16_t>(colours[static_cast<std::size_t>(ColourAt(sensor.camera, row, column))]);
  }
}

void ExpectMultipliers(const NefMultipliers& found, double red, double blue) {
  EXPECT_NEAR(found.red, red, 1e-9);
  EXPECT_NEAR(found.blue, blue, 1e-9);
}

TEST(NefWhiteBalanceTest, TakesThoseOfALight) {
  const auto sensor = Frame("NIKON D1", 6, 6, {100, 200, 400});
  const struct {
    int code;
    double red, blue;
  } lights[] = {{1, 2.2588, 1.7608}, {2, 2.5098, 1.6314}, {3, 2.9098, 1.4392},
                {4, 2.5412, 1.5412}, {5, 2.0588, 2.6196}, {6, 1.4078, 2.8314}};
  for (const auto& light : lights) {
    ExpectMultipliers(FindNefMultipliers(sensor, {.whiteBalance = light.code}), light.red, light.blue);
  }
}

TEST(NefWhiteBalanceTest, MakesTheFrameGrey) {
  for (const auto* model : {"NIKON D1", "NIKON D2H", "NIKON D100"}) {
    for (const int code : {255, -10, 0, 99}) {
      ExpectMultipliers(FindNefMultipliers(Frame(model, 7, 9, {100, 200, 400}), {.whiteBalance = code}), 2, 0.5);
    }
  }
  ExpectMultipliers(FindNefMultipliers(Frame("NIKON D1", 6, 6, {0, 200, 5000}), {}), 1, 1);  // dark, and out of range
  // Green 1000, magenta 1400, cyan 1600, yellow 1800: brightness 1450, blue 50, red 150.
  ExpectMultipliers(FindNefMultipliers(Frame("E5700", 6, 6, {1000, 1400, 1600, 1800}), {}), 1326.0 / 1660,
                    1326.0 / 1539);
}

TEST(NefWhiteBalanceTest, MakesThePointGrey) {
  const struct {
    const char* model;
    int x, y, cellX, cellY;
  } points[] = {
      {"NIKON D1", 4, 2, 4, 2},          {"NIKON D1", 5, 3, 5, 3},   {"NIKON D100", 5, 2, 5, 2},
      {"NIKON D1", 99, 99, 14, 10},      {"NIKON D1", -5, -1, 0, 0}, {"NIKON D1X", 2012, 1311, 8, 6},
      {"NIKON D1X", 4023, 2621, 14, 10},
  };
  for (const auto& point : points) {
    for (const int code : {-1, 32768}) {
      auto sensor = Frame(point.model, 16, 12, {500, 500, 500});
      PutCell(sensor, point.cellY, point.cellX, {800, 400, 1600});
      ExpectMultipliers(FindNefMultipliers(sensor, {.whiteBalance = code, .customX = point.x, .customY = point.y}), 0.5,
                        0.25);
    }
  }
}

}  // namespace
}  // namespace ml::rawconvert
