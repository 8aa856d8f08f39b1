#include "rawconvert/nef/nef_white_balance.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "rawconvert/nef/four_colours.h"

namespace ml::rawconvert {
namespace {

constexpr int kLevels = 4096;  ///< samples above do not count
constexpr int kD1XWidth = 4024, kD1XHeight = 2622;

struct Light {
  int code;
  NefMultipliers multipliers;
};
constexpr Light kLights[] = {
    {nef_white_balance::kShade, {2.9098, 1.4392}},        {nef_white_balance::kCloudy, {2.5098, 1.6314}},
    {nef_white_balance::kSunny, {2.2588, 1.7608}},        {nef_white_balance::kFlash, {2.5412, 1.5412}},
    {nef_white_balance::kIncandescent, {1.4078, 2.8314}}, {nef_white_balance::kFluorescent, {2.0588, 2.6196}},
};

/// Sums over red, green and blue sites; there are twice as many green ones.
struct Sums {
  double red = 0, green = 0, blue = 0;
  double& Of(int colour) { return colour == 0 ? red : colour == 1 ? green : blue; }
  NefMultipliers Multipliers(double scale) const {
    return {red > 0 && green > 0 ? scale * green / red : 1, blue > 0 && green > 0 ? scale * green / blue : 1};
  }
};

/// The samples of the cell at an even or odd place, each at its colour's number.
std::array<int, 4> FourAt(const NefSensor& sensor, int y, int x) {
  std::array<int, 4> colours{};
  for (int i = 0; i < 4; ++i) {
    const int row = y + i / 2, column = x + i % 2;
    colours[static_cast<std::size_t>(ColourAt(sensor.camera, row, column))] = sensor.Row(row)[column];
  }
  return colours;
}

void AddCell(const NefSensor& sensor, int y, int x, Sums& sums) {
  if (sensor.camera.colours == 4) {
    const auto rgb = RgbOfFourColours(FourAt(sensor, y, x));
    sums.red += rgb[0];
    sums.green += rgb[1];
    sums.blue += rgb[2];
    return;
  }
  for (int i = 0; i < 4; ++i) {
    const int row = y + i / 2, column = x + i % 2;
    const int sample = sensor.Row(row)[column];
    sums.Of(ColourAt(sensor.camera, row, column)) += sample < kLevels ? sample : 0;
  }
}

double ScaleOf(const NefSensor& sensor) { return sensor.camera.colours == 4 ? 1 : 0.5; }

NefMultipliers AtPoint(const NefSensor& sensor, const NefSettings& settings) {
  double x = settings.customX, y = settings.customY;
  if (sensor.camera.index == kNefD1X) {
    x = x * sensor.width / kD1XWidth;
    y = y * sensor.height / kD1XHeight;
  }
  Sums sums;
  AddCell(sensor, static_cast<int>(std::clamp(y, 0.0, sensor.height - 2.0)),
          static_cast<int>(std::clamp(x, 0.0, sensor.width - 2.0)), sums);
  return sums.Multipliers(ScaleOf(sensor));
}

/// Sums of the columns of each parity in a row, of the levels that count.
std::array<std::uint64_t, 2> SumRow(const NefSensor& sensor, int y) {
  std::array<std::uint64_t, 2> sums{};
  const auto* row = sensor.Row(y);
  for (int x = 0; x + 1 < sensor.width; x += 2) {
    sums[0] += row[x] < kLevels ? row[x] : 0;
    sums[1] += row[x + 1] < kLevels ? row[x + 1] : 0;
  }
  return sums;
}

NefMultipliers OfFrame(const NefSensor& sensor) {
  Sums sums;
  for (int y = 0; y + 1 < sensor.height; y += 2) {
    if (sensor.camera.colours == 4) {
      for (int x = 0; x + 1 < sensor.width; x += 2) AddCell(sensor, y, x, sums);
      continue;
    }
    for (const int row : {y, y + 1}) {
      const auto halves = SumRow(sensor, row);
      sums.Of(ColourAt(sensor.camera, row, 0)) += static_cast<double>(halves[0]);
      sums.Of(ColourAt(sensor.camera, row, 1)) += static_cast<double>(halves[1]);
    }
  }
  return sums.Multipliers(ScaleOf(sensor));
}

}  // namespace

NefMultipliers FindNefMultipliers(const NefSensor& sensor, const NefSettings& settings) {
  const int code = settings.whiteBalance;
  if (code == nef_white_balance::kCustom || code == nef_white_balance::kCustomListed) return AtPoint(sensor, settings);
  const auto* light = std::ranges::find(kLights, code, &Light::code);
  return light == std::end(kLights) ? OfFrame(sensor) : light->multipliers;
}

}  // namespace ml::rawconvert
