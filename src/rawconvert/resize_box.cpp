#include "rawconvert/resize_box.h"

#include <algorithm>
#include <cmath>

namespace ml::rawconvert {
namespace {

constexpr double kCentimetresAnInch = 2.54;

double UnitsAnInch(ResizeUnits units) { return units == ResizeUnits::Centimetres ? kCentimetresAnInch : 1; }

}  // namespace

double MaxBoxEdge(ResizeUnits units) {
  switch (units) {
    case ResizeUnits::Inches:
      return 100;
    case ResizeUnits::Centimetres:
      return 250;
    case ResizeUnits::Pixels:
      break;
  }
  return kMaxBoxPixels;
}

int BoxDecimals(ResizeUnits units) { return units == ResizeUnits::Pixels ? 0 : 2; }

double BoxEdgeIn(ResizeUnits units, int pixels, int dpi) {
  if (units == ResizeUnits::Pixels) return pixels;
  return std::round(pixels * UnitsAnInch(units) / dpi * 100) / 100;
}

int BoxPixelsOf(ResizeUnits units, double edge, int dpi) {
  const double pixels = units == ResizeUnits::Pixels ? edge : edge * dpi / UnitsAnInch(units);
  return static_cast<int>(std::clamp(std::round(pixels), 1.0, static_cast<double>(kMaxBoxPixels)));
}

}  // namespace ml::rawconvert
