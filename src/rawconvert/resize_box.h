#pragma once

#include "rawconvert/raw_conversion_settings.h"

/// The box that pictures are resized into, as a dialog shows it in pixels, inches or centimetres.
namespace ml::rawconvert {

inline constexpr int kMaxBoxPixels = 15000;

/// The longest edge that can be entered, in `units`, and the decimals that are kept.
double MaxBoxEdge(ResizeUnits units);
int BoxDecimals(ResizeUnits units);
/// `dpi`: dots an inch, above 0.
double BoxEdgeIn(ResizeUnits units, int pixels, int dpi);
/// Brought into 1..kMaxBoxPixels.
int BoxPixelsOf(ResizeUnits units, double edge, int dpi);

}  // namespace ml::rawconvert
