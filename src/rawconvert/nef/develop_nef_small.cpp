#include <algorithm>
#include <array>

#include "imaging/row_bands.h"
#include "rawconvert/nef/develop_nef.h"
#include "rawconvert/nef/four_colours.h"
#include "rawconvert/nef/nef_colour.h"
#include "rawconvert/nef/row_progress.h"
#include "rawconvert/nef/site_window.h"

namespace ml::rawconvert {
namespace {

constexpr int kBorder = 2, kCell = 2;
constexpr std::size_t kRun = SiteWindow::kSites;

struct Cells {
  SiteRow red, green, blue;
};

/// Red, green and blue of the cell whose first site stands there, green as the average of its two sites.
std::array<int, 3> CellColour(const NefSensor& sensor, int y, int x) {
  std::array<int, 4> sums{};
  for (int i = 0; i < 4; ++i) {
    const int row = y + i / 2, column = x + i % 2;
    sums[static_cast<std::size_t>(ColourAt(sensor.camera, row, column))] +=
        std::min<int>(sensor.Row(row)[column], 4095);
  }
  if (sensor.camera.colours == 4) return RgbOfFourColours(sums);
  return {sums[0], (sums[1] + 1) / 2, sums[2]};
}

void DevelopRow(const NefSensor& sensor, const NefColour& colour, int row, int width, std::byte* out) {
  Cells cells;
  std::array<std::uint16_t, 3 * kRun> developed;
  for (int done = 0; done < width; done += SiteWindow::kSites) {
    const auto count = static_cast<std::size_t>(std::min(SiteWindow::kSites, width - done));
    for (std::size_t i = 0; i < count; ++i) {
      const int x = kBorder + kCell * (done + static_cast<int>(i));
      const auto rgb = CellColour(sensor, kBorder + kCell * row, x);
      cells.red[i] = static_cast<std::int16_t>(rgb[0]);
      cells.green[i] = static_cast<std::int16_t>(rgb[1]);
      cells.blue[i] = static_cast<std::int16_t>(rgb[2]);
    }
    const auto part = [&](const SiteRow& values) { return std::span(values).first(count); };
    colour.Apply(part(cells.red), part(cells.green), part(cells.blue), developed.data(), 3);
    for (std::size_t i = 0; i < 3 * count; ++i) *out++ = static_cast<std::byte>(developed[i] >> 8);
  }
}

}  // namespace

imaging::PictureSize SmallNefSize(const NefSensor& sensor) {
  return {(sensor.width - 2 * kBorder) / kCell, (sensor.height - 2 * kBorder) / kCell};
}

imaging::PixelBuffer DevelopNefSmall(const NefSensor& sensor, const NefSettings& settings, const DevelopWatch& watch) {
  constexpr int kReadPercent = 20, kOtherPercent = 80;
  const NefColour colour(settings, FindNefMultipliers(sensor, settings));
  const auto [width, height] = SmallNefSize(sensor);
  auto pixels = imaging::MakePixelBuffer(width, height);
  RowProgress progress(watch, kReadPercent, kOtherPercent);
  imaging::ForRowBands(
      height,
      [&, w = width, h = height](int first, int end) {
        for (int y = first; y < end; ++y) DevelopRow(sensor, colour, y, w, pixels.Row(y));
        progress.Add(end - first, h);
      },
      watch.stop);
  return pixels;
}

}  // namespace ml::rawconvert
