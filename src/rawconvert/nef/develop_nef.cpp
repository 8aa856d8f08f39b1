#include "rawconvert/nef/develop_nef.h"

#include <algorithm>
#include <span>
#include <utility>

#include "imaging/row_bands.h"
#include "rawconvert/nef/four_colours.h"
#include "rawconvert/nef/interpolate_sites.h"
#include "rawconvert/nef/nef_colour.h"
#include "rawconvert/nef/resize_mitchell.h"
#include "rawconvert/nef/row_progress.h"
#include "rawconvert/nef/site_rows.h"

namespace ml::rawconvert {
namespace {

constexpr int kBorder = 2;
constexpr int kReadPercent = 20, kInterpolatePercent = 80;
constexpr imaging::PictureSize kD1XSize{4024, 2622};

imaging::PictureSize InterpolatedSize(const NefSensor& sensor) {
  return {sensor.width - 2 * kBorder, sensor.height - 2 * kBorder};
}

/// Red, green and blue of a run of sites.
using RunColours = std::array<const SiteRow*, 3>;

/// Works on the rows of one band, with room of its own.
class BandDeveloper {
 public:
  BandDeveloper(const NefSensor& sensor, const NefColour& colour, imaging::PixelBuffer& out)
      : sensor_(sensor), colour_(colour), out_(out) {}

  /// Rows of the picture.
  void Develop(int first, int end) {
    const SiteRows rows(sensor_, first, end - first + 2 * kBorder);
    for (int y = first; y < end; ++y) {
      for (const int parity : {0, 1}) DevelopSites(rows, y + kBorder, parity);
    }
  }

 private:
  /// The sites of a row's even or odd columns.
  void DevelopSites(const SiteRows& rows, int row, int parity) {
    auto* out = reinterpret_cast<std::uint16_t*>(out_.Row(row - kBorder));  // the buffer's samples have two bytes
    const int sites = (sensor_.width - 2 * kBorder + 1 - parity) / 2;
    for (int done = 0; done < sites; done += SiteWindow::kSites) {
      const auto count = static_cast<std::size_t>(std::min(SiteWindow::kSites, sites - done));
      rows.Cut(row, done + 1, window_);
      const auto rgb = Interpolate(row, parity);
      const auto part = [&](int c) { return std::span(*rgb[static_cast<std::size_t>(c)]).first(count); };
      colour_.Apply(part(0), part(1), part(2), out + (2 * done + parity) * 3, 6);
    }
  }

  RunColours Interpolate(int row, int parity) {
    const auto colourAt = [&](int y, int x) {
      return static_cast<std::size_t>(ColourAt(sensor_.camera, row + y, parity + x));
    };
    if (sensor_.camera.colours == 4) return InterpolateFour(row, parity);
    RunColours rgb{};
    rgb[colourAt(0, 0)] = &sites_.own;
    rgb[colourAt(0, 1)] = &sites_.beside;
    if (colourAt(0, 0) == 1) {
      InterpolateGreenSites(window_, parity, sites_);
      rgb[colourAt(1, 0)] = &sites_.upright;
    } else {
      InterpolateRedBlueSites(window_, parity, sites_);
      rgb[colourAt(1, 1)] = &sites_.corner;
    }
    return rgb;
  }

  RunColours InterpolateFour(int row, int parity) {
    InterpolateFourColourSites(window_, parity, sites_);
    const std::array<const SiteRow*, 4> places = {&sites_.own, &sites_.beside, &sites_.upright, &sites_.corner};
    std::array<const SiteRow*, 4> of{};
    for (int i = 0; i < 4; ++i) {
      of[static_cast<std::size_t>(ColourAt(sensor_.camera, row + i / 2, parity + i % 2))] =
          places[static_cast<std::size_t>(i)];
    }
    for (std::size_t k = 0; k < SiteWindow::kSites; ++k) {
      const auto rgb = RgbOfFourColours({(*of[0])[k], (*of[1])[k], (*of[2])[k], (*of[3])[k]});
      for (std::size_t c = 0; c < 3; ++c) fromFour_[c][k] = static_cast<std::int16_t>(rgb[c]);
    }
    return {&fromFour_[0], &fromFour_[1], &fromFour_[2]};
  }

  const NefSensor& sensor_;
  const NefColour& colour_;
  imaging::PixelBuffer& out_;
  SiteWindow window_;
  SiteColours sites_;
  std::array<SiteRow, 3> fromFour_;
};

}  // namespace

imaging::PixelBuffer DevelopNef(const NefSensor& sensor, const NefSettings& settings, const DevelopWatch& watch) {
  const NefColour colour(settings, FindNefMultipliers(sensor, settings));
  const auto [width, height] = InterpolatedSize(sensor);
  auto pixels = imaging::MakePixelBuffer(width, height, imaging::PixelOrder::Rgb, 2);
  RowProgress progress(watch, kReadPercent, kInterpolatePercent);
  imaging::ForRowBands(
      height,
      [&](int first, int end) {
        BandDeveloper(sensor, colour, pixels).Develop(first, end);
        progress.Add(end - first, height);
      },
      watch.stop);
  if (sensor.camera.index != kNefD1X) return pixels;
  return ResizeMitchell(pixels, kD1XSize.width, kD1XSize.height, watch.stop);
}

}  // namespace ml::rawconvert
